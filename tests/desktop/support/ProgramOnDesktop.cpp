#include "ProgramOnDesktop.h"

#include "Desktop.h"

#include <algorithm>

namespace orrivane::e2e {

const std::vector<std::string> ProgramOnDesktop::fourItems{
    "--items", "battery,wifi,volume,mail", "--no-windows", "--panel", "760,0,150,37"};

ProgramOnDesktop::Settings ProgramOnDesktop::everythingOpen(bool ownIcon) {
    return {{"OrrivaneShowStatusItem", ownIcon},
            {"OrrivaneArrangeExpanded", true},
            {"OrrivaneSqueezeShown", true}};
}

void ProgramOnDesktop::start(const std::vector<std::string>& desktop, const Settings& settings,
                             const Environment& extra) {
    startDesktop(desktop);
    store(settings);
    startProgram(extra);
}

void ProgramOnDesktop::startProgram(const Environment& extra) {
    program_.emplace(launch("program", extra));
}

void ProgramOnDesktop::store(const Settings& settings) {
    std::string text = "[General]\n";
    for (const auto& [name, value] : settings)
        text += name + (value ? "=true\n" : "=false\n");
    writeFile(desktop_->configFolder() + "/orrivane/orrivane.conf", text);
}

ChildProcess ProgramOnDesktop::launch(const std::string& log, const Environment& extra) {
    ChildProcess::Options options;
    options.arguments = {Desktop::programPath()};
    options.environment = desktop_->environment();
    for (const auto& [name, value] : extra)
        options.environment[name] = value;
    options.logFile = folder_.path() + "/" + log + ".log";
    return ChildProcess(std::move(options));
}

std::optional<ExitStatus> ProgramOnDesktop::launchAgain() {
    return launch("second", {}).wait(defaultBound);
}

void ProgramOnDesktop::bringWindow() {
    // Its windows are made after it has become the program on this desktop.
    ASSERT_TRUE(waitFor("it has started", [&] {
        return std::ranges::any_of(observer().topLevels(), [&](const auto& each) {
            return each.area.width >= openWidth && observer().pidOf(each.id) == program_->pid();
        });
    })) << program_->log();
    ASSERT_EQ(launchAgain(), (ExitStatus{0, {}}));
}

std::vector<std::string> ProgramOnDesktop::order() {
    std::vector<std::string> result;
    for (const auto& icon : desktop_->icons())
        result.push_back(icon.instanceName);
    return result;
}

} // namespace orrivane::e2e
