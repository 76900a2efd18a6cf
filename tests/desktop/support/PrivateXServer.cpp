#include "PrivateXServer.h"

#include "Surroundings.h"
#include "WaitFor.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace orrivane::e2e {

namespace {

/// The line the server writes once it listens; empty when it ended or said nothing in time.
std::string readLine(int descriptor, ChildProcess& server) {
    std::string line;
    waitFor("the X server names its display", [&] {
        pollfd entry{descriptor, POLLIN, 0};
        std::array<char, 32> bytes{};
        while (poll(&entry, 1, 0) == 1 && (entry.revents & POLLIN) != 0) {
            const ssize_t count = read(descriptor, bytes.data(), bytes.size());
            if (count <= 0) {
                break;
            }
            line.append(bytes.data(), static_cast<std::size_t>(count));
        }
        return line.ends_with('\n') || !server.isRunning();
    });
    if (line.ends_with('\n')) {
        line.pop_back();
    } else {
        line.clear();
    }
    return line;
}

void passOn(const char* variable, Environment& environment) {
    if (const char* value = std::getenv(variable); value != nullptr) {
        environment[variable] = value;
    }
}

} // namespace

PrivateXServer::PrivateXServer(const Options& options, const std::string& directory)
    : options_(options) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe for the X server");
    }
    const bool nested = !options.nestedIn.empty();
    const std::string size = std::to_string(options.width) + "x" + std::to_string(options.height);
    // Without -noreset the server would drop every property when its last client leaves.
    ChildProcess::Options child;
    child.arguments = {nested ? "Xephyr" : "Xvfb",
                       "-displayfd",
                       std::to_string(ends[1]),
                       "-noreset",
                       "-nolisten",
                       "tcp",
                       "-screen"};
    child.environment = plainEnvironment();
    if (nested) {
        child.arguments.insert(child.arguments.end(), {size, "-title", "Orrivane"});
        child.environment["DISPLAY"] = options.nestedIn;
        passOn("XAUTHORITY", child.environment);
        passOn("HOME", child.environment);
    } else {
        child.arguments.insert(child.arguments.end(), {"0", size + "x24"});
    }
    child.arguments.insert(child.arguments.end(), options.extraArguments.begin(),
                           options.extraArguments.end());
    child.logFile = directory + "/xvfb.log";
    child.keepOpen = {ends[1]};
    process_.emplace(std::move(child));
    close(ends[1]);
    const std::string number = readLine(ends[0], *process_);
    close(ends[0]);
    if (number.empty()) {
        throw std::runtime_error(process_->name() + " did not start:\n" + process_->log());
    }
    display_ = ":" + number;
}

} // namespace orrivane::e2e
