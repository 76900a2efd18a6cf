#include "Desktop.h"

#include "WaitFor.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iterator>
#include <stdexcept>

namespace orrivane::e2e {

std::vector<WindowState> Desktop::foreignIcons() {
    std::vector<WindowState> icons = observer_->trayIcons();
    const pid_t own = program_ ? program_->pid() : -1;
    std::erase_if(icons, [&](const WindowState& icon) { return observer_->pidOf(icon.id) == own; });
    return icons;
}

std::vector<WindowState> Desktop::settledIcons() {
    using Clock = std::chrono::steady_clock;
    constexpr auto rest = std::chrono::milliseconds(100);
    std::vector<WindowState> icons = foreignIcons();
    auto since = Clock::now();
    const auto settled = waitFor("the tray comes to rest", [&] {
        std::vector<WindowState> now = foreignIcons();
        if (now != icons) {
            icons = std::move(now);
            since = Clock::now();
        }
        return Clock::now() - since >= rest;
    });
    if (!settled)
        throw std::runtime_error(settled.message());
    return icons;
}

std::vector<WindowState> Desktop::popupsOf(xcb_window_t window) {
    std::vector<WindowState> popups = observer_->popups();
    std::erase_if(
        popups, [&](const WindowState& popup) { return !observer_->sameClient(popup.id, window); });
    return popups;
}

WindowState Desktop::openMenu(const DockedClient& client, std::uint8_t button) {
    const auto icon = observer_->window(client.icon);
    if (!icon)
        throw std::runtime_error("the icon of " + client.kind->name + " is gone");
    observer_->click(icon->area.centre(), button == 0 ? client.kind->menuButton : button);
    return waitForValue<WindowState>("the menu of " + client.kind->name + " opens", [&] {
        const std::vector<WindowState> popups = popupsOf(client.icon);
        return popups.empty() ? std::nullopt : std::optional(popups.back());
    });
}

void Desktop::closeMenu(const WindowState& menu) {
    using Clock = std::chrono::steady_clock;
    // A menu takes the keyboard some time after it is mapped; an earlier key goes elsewhere.
    constexpr auto patience = std::chrono::milliseconds(300);
    Clock::time_point pressed;
    const auto closed = waitFor("the menu closes on Escape", [&] {
        const auto state = observer_->window(menu.id);
        const bool open = state && state->isViewable();
        if (open && Clock::now() - pressed >= patience) {
            observer_->tapKey(keyEscape);
            pressed = Clock::now();
        }
        return !open;
    });
    if (!closed)
        throw std::runtime_error(closed.message());
}

PixelRect Desktop::setCutout(int left, int right) {
    const PixelRect cutout{left, 0, right - left, options_.barHeight};
    observer_->setCutouts({cutout});
    return cutout;
}

PixelRect Desktop::cutOutIcons(std::size_t first, std::size_t last) {
    const std::vector<WindowState> icons = settledIcons();
    return setCutout(icons.at(first).area.x, icons.at(last).area.right());
}

std::string Desktop::programPath() {
    if (const char* path = std::getenv("ORRIVANE_PROGRAM"); path != nullptr && *path != '\0')
        return path;
#ifdef ORRIVANE_PROGRAM
    return ORRIVANE_PROGRAM;
#else
    throw std::runtime_error("set ORRIVANE_PROGRAM to the path of the program");
#endif
}

void Desktop::setDefault(const std::string& key, bool value) {
    defaults_[key] = value;
    writeDefaults();
}

void Desktop::writeDefaults() {
    std::string text = "[General]\n";
    for (const auto& [name, stored] : defaults_)
        text += name + (stored ? "=true\n" : "=false\n");
    writeFile(environment("orrivane").at("XDG_CONFIG_HOME") + "/orrivane/orrivane.conf", text);
}

ChildProcess& Desktop::startProgram(const std::vector<std::string>& arguments,
                                    const Environment& extra) {
    ChildProcess::Options child;
    writeDefaults();
    child.arguments = {programPath()};
    child.arguments.insert(child.arguments.end(), arguments.begin(), arguments.end());
    child.environment = environment("orrivane");
    for (const auto& [name, value] : extra)
        child.environment[name] = value;
    child.logFile = logFor("orrivane");
    child.workingDirectory = programHome();
    program_.reset();
    program_.emplace(std::move(child));
    return *program_;
}

std::optional<ExitStatus> Desktop::launchAgain(const std::vector<std::string>& arguments,
                                               const std::string& output) {
    ChildProcess::Options child;
    child.arguments = {programPath()};
    child.arguments.insert(child.arguments.end(), arguments.begin(), arguments.end());
    child.environment = environment("orrivane");
    child.logFile = output.empty() ? logFor("second") : output;
    return ChildProcess(std::move(child)).wait(2 * defaultBound);
}

std::vector<WindowState> Desktop::programWindows() {
    std::vector<WindowState> windows = observer_->topLevels();
    const pid_t own = program_ ? program_->pid() : -1;
    std::erase_if(windows,
                  [&](const WindowState& window) { return observer_->pidOf(window.id) != own; });
    return windows;
}

std::optional<WindowState> Desktop::strip() {
    const std::vector<PixelRect> cutouts = observer_->cutouts();
    for (const WindowState& window : programWindows()) {
        const bool inBand =
            std::any_of(cutouts.begin(), cutouts.end(), [&](const PixelRect& cutout) {
                return window.area.y >= cutout.y && window.area.bottom() <= cutout.bottom();
            });
        if (inBand && window.overrideRedirect && window.isViewable() &&
            window.type != "_NET_WM_WINDOW_TYPE_TOOLTIP") {
            return window;
        }
    }
    return std::nullopt;
}

WindowState Desktop::waitForStrip() {
    try {
        return waitForValue<WindowState>("the strip shows", [&] { return strip(); });
    } catch (const std::runtime_error& failure) {
        throw std::runtime_error(failure.what() + ("\n" + program_->log()));
    }
}

} // namespace orrivane::e2e
