#include "BarStage.h"

#include "Surroundings.h"
#include "TestWindow.h"
#include "WaitFor.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace orrivane::e2e {

BarStage::BarStage(const Options& options)
    : options_(options) {
    if (options.accessible)
        adoptOrphans();
    server_.emplace(PrivateXServer::Options{options.width, options.height, {}}, folder_.path());
    observer_.emplace(server_->display());
    observer_->setCutouts(options.cutouts);
    if (options.accessible)
        bus_.emplace(environment("services"), folder_.path());
    if (options.windowManager) {
        windowManager_.emplace(ChildProcess::Options{
            {"openbox", "--sm-disable"}, environment("openbox"), log("openbox"), {}, {}});
        // It announces itself before it serves: only a window it has taken over proves that it
        // does.
        TestWindow probe(*observer_, {{0, 0, 8, 8}});
        if (!waitFor("the window manager takes windows over", [&] {
                probe.map();
                return probe.isManaged();
            }))
            throw std::runtime_error("openbox did not start:\n" + windowManager_->log());
    }
    startBar(options.preferences);
}

BarStage::~BarStage() {
    if (testing::Test::HasFailure() && bar_)
        std::cerr << "The bar's log:\n" << bar_->log();
    if (!bus_)
        return;
    // Services that the bus started belong to nobody else.
    bar_.reset();
    windowManager_.reset();
    bus_.reset();
    endOrphans();
}

Environment BarStage::environment(const std::string& name) const {
    auto result =
        graphicalEnvironment(server_->display(), folder_.path() + '/' + name, folder_.path());
    if (options_.accessible) {
        setSessionBus(result, bus_ ? bus_->address() : std::string());
        result["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1";
    }
    return result;
}

ChildProcess BarStage::barProcess(const std::string& name,
                                  const std::vector<std::string>& arguments) {
    std::vector<std::string> line{ORRIVANE_CONTROL_CENTER};
    line.insert(line.end(), arguments.begin(), arguments.end());
    return ChildProcess({line, environment("bar"), log(name), {}, {}});
}

void BarStage::startBar(const std::string& preferences) {
    writeFile(folder_.path() + "/bar/.config/orrivane/menu-bar.conf", preferences);
    std::vector<std::string> arguments{"--scale", std::to_string(options_.scale)};
    if (options_.dark)
        arguments.emplace_back("--dark");
    bar_.emplace(barProcess("bar", arguments));
    const auto up = [&] {
        const auto owner = observer_->trayOwner();
        const auto window = owner == 0 ? std::nullopt : observer_->window(owner);
        return window && window->isViewable() && window->area.width > 1;
    };
    if (const auto result = waitFor("the bar is a tray", up); !result)
        throw std::runtime_error(std::string(result.message()) + '\n' + bar_->log());
}

void BarStage::killBar() {
    bar_->kill();
    if (!waitFor("the tray is gone", [&] { return observer_->trayOwner() == 0; }))
        throw std::runtime_error("the tray outlives the bar");
}

WindowState BarStage::dock() {
    return waitForValue<WindowState>("the dock shows", [&] { return observer_->dockOf(); });
}

WindowState BarStage::tray() {
    return waitForValue<WindowState>("there is a tray", [&] {
        const auto owner = observer_->trayOwner();
        return owner == 0 ? std::nullopt : observer_->window(owner);
    });
}

std::vector<WindowState> BarStage::icons() {
    auto icons = observer_->trayIcons();
    std::erase_if(icons,
                  [](const WindowState& icon) { return icon.mapState == MapState::unmapped; });
    return icons;
}

std::vector<xcb_window_t> BarStage::order() {
    std::vector<xcb_window_t> order;
    for (const auto& icon : icons())
        order.push_back(icon.id);
    return order;
}

std::vector<PixelRect> BarStage::placesOf(std::size_t count) {
    const auto read = [&] {
        std::vector<PixelRect> places;
        for (const auto& icon : icons())
            places.push_back(icon.area);
        return places;
    };
    // The bar takes an icon in before it gives it its place.
    constexpr std::chrono::milliseconds rest{100};
    return waitForValue<std::vector<PixelRect>>(
        std::to_string(count) + " icons show", [&]() -> std::optional<std::vector<PixelRect>> {
            const auto places = read();
            const auto isSame = [&] { return read() == places; };
            const bool rests = places.size() == count && staysTrue("they rest", isSame, rest);
            return rests ? std::optional(places) : std::nullopt;
        });
}

std::optional<WindowState> BarStage::notch() {
    for (const auto& window : observer_->topLevels())
        if (window.isViewable() && window.overrideRedirect && window.className == "ControlCenter" &&
            observer_->cutouts().size() == 1 && window.area == observer_->cutouts().front())
            return window;
    return std::nullopt;
}

WindowState BarStage::titles() {
    return waitForValue<WindowState>("the menus' titles show", [&]() -> std::optional<WindowState> {
        const auto dock = observer_->dockOf();
        const auto owner = observer_->trayOwner();
        for (const auto& window : observer_->tree())
            if (dock && window.parent == dock->id && window.id != owner && window.isViewable())
                return window;
        return std::nullopt;
    });
}

ClientWindow& BarStage::addIcon(const std::string& name, int width) {
    return addIcon({name, width, 20, true, false});
}

ClientWindow& BarStage::addIcon(const ClientWindow::Options& options) {
    auto& window = windows_.emplace_back(display(), options);
    window.dock();
    const auto result = waitFor(options.className + " is in the tray", [&] {
        const auto order = this->order();
        return std::find(order.begin(), order.end(), window.id()) != order.end();
    });
    if (!result)
        throw std::runtime_error(result.message());
    return window;
}

} // namespace orrivane::e2e
