#include "NotchedDesktop.h"

#include "WaitFor.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

extern char** environ;

namespace orrivane::e2e {

namespace {

Environment ownEnvironment() {
    Environment result;
    for (char** word = environ; *word != nullptr; ++word) {
        const std::string text = *word;
        result[text.substr(0, text.find('='))] = text.substr(text.find('=') + 1);
    }
    result.erase("DISPLAY");
    return result;
}

std::map<pid_t, pid_t> parents() {
    std::map<pid_t, pid_t> result;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        const std::string stat = readFile(entry.path() / "stat");
        const auto end = stat.rfind(')');
        if (end != std::string::npos && end + 4 < stat.size())
            result[std::atoi(name.c_str())] = std::atoi(stat.c_str() + end + 4);
    }
    return result;
}

} // namespace

std::vector<pid_t> descendants(pid_t ancestor) {
    const auto all = parents();
    std::set<pid_t> found{ancestor};
    for (bool grew = true; grew;) {
        grew = false;
        for (const auto& [process, parent] : all)
            grew = (found.contains(parent) && found.insert(process).second) || grew;
    }
    found.erase(ancestor);
    return {found.begin(), found.end()};
}

std::string NotchedDesktop::sessionPath() {
#ifdef ORRIVANE_DESKTOP_SESSION
    return ORRIVANE_DESKTOP_SESSION;
#else
    throw std::runtime_error("the build has no notched desktop");
#endif
}

NotchedDesktop::NotchedDesktop(const std::vector<std::string>& arguments) {
    ChildProcess::Options options;
    options.arguments = {sessionPath(),  "--headless", "--config",
                         configFolder(), "--log",      folder_.path() + "/choices"};
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    options.environment = ownEnvironment();
    // What a session that is killed cannot take away goes with this.
    options.environment["TMPDIR"] = folder_.path();
    options.logFile = folder_.path() + "/session.log";
    session_.emplace(std::move(options));
    const bool settled = static_cast<bool>(waitFor(
        "the desktop is ready",
        [&] {
            return session_->log().find("ready display=") != std::string::npos ||
                   !session_->isRunning();
        },
        std::chrono::seconds(30)));
    const std::string log = session_->log();
    const auto start = log.find("ready display=");
    if (!settled || start == std::string::npos)
        throw std::runtime_error("the notched desktop is not ready: " + log);
    std::istringstream(log.substr(start + 14)) >> display_;
    observer_.emplace(display_);
}

NotchedDesktop::~NotchedDesktop() {
    observer_.reset();
    session_->terminate(std::chrono::seconds(10));
}

std::vector<pid_t> NotchedDesktop::processesOf(const std::string& program) {
    std::vector<pid_t> result;
    for (const pid_t process : descendants(session_->pid())) {
        std::error_code error;
        const auto file =
            std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", error);
        if (!error && file.filename() == program)
            result.push_back(process);
    }
    return result;
}

Environment NotchedDesktop::environment() {
    const auto bars = processesOf("ControlCenter");
    Environment result;
    if (bars.empty())
        return result;
    const std::string words = readFile("/proc/" + std::to_string(bars.front()) + "/environ");
    std::istringstream stream(words);
    for (std::string word; std::getline(stream, word, '\0');) {
        const auto sign = word.find('=');
        if (sign != std::string::npos)
            result[word.substr(0, sign)] = word.substr(sign + 1);
    }
    return result;
}

std::optional<WindowState> NotchedDesktop::icon(const std::string& instanceName) {
    for (const auto& each : icons())
        if (each.instanceName == instanceName)
            return each;
    return std::nullopt;
}

} // namespace orrivane::e2e
