#include "TrayProcess.h"

#include <Surroundings.h>
#include <WaitFor.h>

#include <atomic>
#include <cstdlib>
#include <sstream>

namespace orrivane::x11 {

namespace {

e2e::ChildProcess::Options options(const std::string& display, const std::string& directory,
                                   const std::string& windowClass, int width) {
    static std::atomic<int> count{0};
    e2e::ChildProcess::Options result;
    result.arguments = {ORRIVANE_TRAY_APPLICATION, display, windowClass, std::to_string(width)};
    result.environment = e2e::plainEnvironment();
    result.logFile = directory + "/application" + std::to_string(++count) + ".log";
    return result;
}

} // namespace

TrayProcess::TrayProcess(const std::string& display, const std::string& directory,
                         const std::string& windowClass, int width)
    : process_(options(display, directory, windowClass, width)) {
    const std::function<std::optional<std::uint32_t>()> told = [this] {
        std::istringstream log(process_.log());
        std::string word;
        std::uint32_t window = 0;
        return log >> word >> window ? std::optional(window) : std::nullopt;
    };
    icon_ = e2e::waitForValue("the application tells its icon", told);
}

int TrayProcess::presses(int button) const {
    std::istringstream log(process_.log());
    const auto wanted = "press " + std::to_string(button);
    int count = 0;
    for (std::string line; std::getline(log, line);)
        count += line == wanted ? 1 : 0;
    return count;
}

} // namespace orrivane::x11
