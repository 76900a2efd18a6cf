#include "ContractWorld.h"

#include <algorithm>
#include <stdexcept>

namespace orrivane::x11 {

ContractWorld::ContractWorld()
    : eyes_(server.display()) {
    toolkit = {[](std::string_view address) { return address.starts_with("https:"); },
               [this] { terminated_ = true; }, [] {}};
    startTray();
    port();
    pump();
}

double ContractWorld::elapsed() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

std::uint32_t ContractWorld::addOrdinaryWindow() {
    const auto window = app.create({.area = {100, 200, 300, 200}});
    app.map(window);
    return window;
}

Rect ContractWorld::frameOf(std::uint32_t number) {
    const auto icon = eyes_.window(number);
    const auto dock = eyes_.window(tray->dock());
    if (!icon || !dock)
        throw std::runtime_error("the item is gone");
    return {{static_cast<double>(icon->area.x), static_cast<double>(dock->area.y)},
            {static_cast<double>(icon->area.width), static_cast<double>(dock->area.height)}};
}

bool ContractWorld::hide(std::uint32_t number) {
    const auto frame = frameOf(number);
    auto& other = *others_.emplace_back(std::make_unique<XClient>(server.display()));
    other.map(other.create(
        {.area = {static_cast<int>(frame.minX()), 0, 24, 28}, .overrideRedirect = true}));
    return true;
}

std::uint32_t ContractWorld::openWindow(Size points) {
    nextX_ -= 50;
    const auto icon =
        addIcon({nextX_, 2, static_cast<int>(points.width), static_cast<int>(points.height)});
    settle();
    return icon;
}

bool ContractWorld::attachPlain() {
    app.remove(app.root(), "_ORRIVANE_DISPLAY_CUTOUT");
    settle();
    return true;
}

bool ContractWorld::attachNotched() {
    setCutout({656, 0, 200, 37});
    settle();
    return true;
}

bool ContractWorld::attachTwo() {
    setMonitor(app, "second", {0, 500, 1512, 482}, false);
    settle();
    return true;
}

bool ContractWorld::setDisplayAsleep(bool asleep) {
    setBlank(app, asleep);
    return true;
}

TrayProcess& ContractWorld::process(std::int32_t pid) {
    const auto found =
        std::ranges::find(processes_, pid, [](const auto& one) { return one->pid(); });
    if (found == processes_.end())
        throw std::runtime_error("no such process");
    return **found;
}

std::int32_t ContractWorld::launch(const std::string& name) {
    auto& started = *processes_.emplace_back(
        std::make_unique<TrayProcess>(server.display(), directory.path(), name));
    nextX_ -= 50;
    tray->embed(started.icon(), tray->addSocket({nextX_, 2, 24, 22}));
    return started.pid();
}

bool ContractWorld::hang(std::int32_t pid) {
    process(pid).process().stop();
    return true;
}

Rect ContractWorld::itemFrame(std::int32_t pid) {
    return frameOf(process(pid).icon());
}

bool ContractWorld::makeFrontmost(std::int32_t pid) {
    activate(process(pid).icon());
    return true;
}

void ContractWorld::activate(xcb_window_t window) {
    app.setNumbers(app.root(), "_NET_ACTIVE_WINDOW", {window}, "WINDOW");
}

bool ContractWorld::cause(SystemNotification notification) {
    switch (notification) {
    case SystemNotification::didActivateApplication: {
        auto& other = *others_.emplace_back(std::make_unique<XClient>(server.display()));
        activate(other.create({}));
        break;
    }
    case SystemNotification::willSleep:
    case SystemNotification::didWake:
        port().workspace.machineSleeps(notification == SystemNotification::willSleep);
        break;
    case SystemNotification::screensDidSleep:
        setBlank(app, true);
        break;
    case SystemNotification::screensDidWake:
        setBlank(app, true);
        pump();
        setBlank(app, false);
        break;
    case SystemNotification::didChangeScreenParameters:
        ++changes_;
        setMonitor(app, "change" + std::to_string(changes_), {0, 0, 300 + changes_, 200}, false);
        break;
    }
    return true;
}

} // namespace orrivane::x11
