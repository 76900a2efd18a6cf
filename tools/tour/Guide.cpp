#include "Guide.h"

#include "Screenshot.h"
#include "WaitFor.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <stdexcept>

namespace orrivane::tour {

namespace {

constexpr int notchMargin = 6;      // pixels, at one a point
constexpr int smallestWindow = 300; // pixels; menus and tooltips are smaller
constexpr std::uint8_t wheelUp = 4;
constexpr std::uint8_t wheelDown = 5;

} // namespace

Guide::Guide(Options options)
    : options_(std::move(options))
    , desktop_(options_.desktop) {
    std::filesystem::create_directories(options_.pictures);
}

void Guide::start() {
    e2e::ChildProcess::Options options;
    options.arguments = {options_.program};
    options.environment = desktop_.environment();
    for (const auto& [name, value] : options_.environment)
        options.environment[name] = value;
    options.logFile = folder_.path() + "/orrivane.log";
    program_.emplace(std::move(options));
    tree_.emplace(desktop_.environment().at("DBUS_SESSION_BUS_ADDRESS"));
    waitFor("the program is on the accessibility bus",
            [&] { return tree_->application(program_->pid()).has_value(); });
}

int Guide::launchAgain(const std::vector<std::string>& arguments) {
    e2e::ChildProcess::Options options;
    options.arguments = {options_.program};
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    options.environment = desktop_.environment();
    options.logFile = folder_.path() + "/launch-" + std::to_string(++launches_) + ".log";
    e2e::ChildProcess second(std::move(options));
    const auto status = second.wait(e2e::defaultBound);
    return status ? status->code.value_or(-1) : -1;
}

e2e::ExitStatus Guide::waitForEnd() {
    const auto status = program_->wait(e2e::defaultBound);
    if (!status)
        throw std::runtime_error("the program does not end");
    return *status;
}

std::optional<e2e::WindowState> Guide::ownIcon() {
    for (const auto& icon : desktop_.icons())
        if (icon.isViewable() && observer().pidOf(icon.id) == program_->pid())
            return icon;
    return std::nullopt;
}

std::optional<e2e::WindowState> Guide::strip() {
    const auto cutouts = observer().cutouts();
    for (const auto& each : observer().topLevels())
        if (!cutouts.empty() && each.isViewable() && each.overrideRedirect &&
            each.area.right() == cutouts[0].x - notchMargin &&
            each.area.height == cutouts[0].height && observer().pidOf(each.id) == program_->pid())
            return each;
    return std::nullopt;
}

std::optional<e2e::WindowState> Guide::window() {
    for (const auto& each : observer().tree())
        if (each.isViewable() && each.area.width >= smallestWindow &&
            each.area.height >= smallestWindow && observer().pidOf(each.id) == program_->pid())
            return each;
    return std::nullopt;
}

std::size_t Guide::hidden() {
    const auto cutouts = observer().cutouts();
    const auto icons = desktop_.icons();
    return static_cast<std::size_t>(std::ranges::count_if(icons, [&](const auto& icon) {
        return !cutouts.empty() && icon.area.x < cutouts[0].right() &&
               icon.area.right() > cutouts[0].x;
    }));
}

std::vector<std::string> Guide::order() {
    std::vector<std::string> result;
    for (const auto& icon : desktop_.icons())
        result.push_back(icon.instanceName);
    return result;
}

std::map<std::string, int> Guide::widths() {
    std::map<std::string, int> result;
    for (const auto& icon : desktop_.icons())
        if (observer().pidOf(icon.id) != program_->pid())
            result[icon.instanceName + ' ' +
                   std::to_string(observer().pidOf(icon.id).value_or(0))] = icon.area.width;
    return result;
}

std::vector<e2e::AccessibleNode> Guide::shown() {
    const auto application = tree_->application(program_->pid());
    if (!application)
        return {};
    auto nodes = tree_->below(*application);
    std::erase_if(
        nodes, [&](const auto& each) { return !tree_->has(each, e2e::AccessibleTree::showing); });
    return nodes;
}

std::optional<e2e::AccessibleNode> Guide::find(const std::string& role, const std::string& name) {
    for (const auto& each : shown())
        if (tree_->roleName(each) == role && tree_->name(each) == name)
            return each;
    return std::nullopt;
}

e2e::AccessibleNode Guide::control(const std::string& role, const std::string& name) {
    return e2e::waitForValue<e2e::AccessibleNode>("the " + role + " \"" + name + "\" shows",
                                                  [&] { return find(role, name); });
}

std::string Guide::text(const std::string& part) {
    for (const auto& each : shown())
        if (auto name = tree_->name(each); name.find(part) != std::string::npos)
            return name;
    return {};
}

std::vector<e2e::PixelRect> Guide::tiles() {
    std::vector<e2e::PixelRect> result;
    for (const auto& each : shown())
        if (tree_->roleName(each) == "list item")
            result.push_back(tree_->extents(each));
    return result;
}

bool Guide::isChecked(const std::string& name) {
    const auto node = find("check box", name);
    return node && tree_->has(*node, e2e::AccessibleTree::checked);
}

void Guide::click(const std::string& role, const std::string& name) {
    const auto node = control(role, name);
    // Dialogs stand in windows of their own, which need no scrolling.
    const auto large = window();
    if (large && large->area.contains(tree_->extents(node).centre())) {
        clickAt(tree_->extents(node).centre());
        return;
    }
    for (int turns = 0; large && turns < 60; ++turns) {
        const auto centre = tree_->extents(node).centre();
        const bool isWithin = centre.y > large->area.y + 40 && centre.y < large->area.bottom() - 10;
        if (isWithin)
            break;
        observer().click(large->area.centre(),
                         centre.y < large->area.centre().y ? wheelUp : wheelDown);
        e2e::pollPause();
    }
    clickAt(tree_->extents(node).centre());
}

void Guide::clickAt(const e2e::PixelPoint& place) {
    observer().click(place);
}

void Guide::workElsewhere() {
    for (const auto& each : observer().tree())
        if (each.isViewable() && each.className == "Notes" && each.area.width >= smallestWindow) {
            constexpr int fromEdge = 30; // in its side bar, below the last entry
            clickAt({each.area.x + fromEdge, each.area.bottom() - fromEdge});
            waitFor("another application has the keyboard", [&] {
                const auto active = observer().activeWindow();
                return active && observer().pidOf(*active) == observer().pidOf(each.id);
            });
            return;
        }
    throw std::runtime_error("there is no other application");
}

void Guide::drag(const e2e::PixelPoint& from, const e2e::PixelPoint& to) {
    observer().movePointer(from);
    observer().button(1, true);
    // Slowly, as a hand: the toolkit looks at the pointer now and then only.
    constexpr int steps = 12;
    constexpr int rests = 3;
    constexpr std::chrono::milliseconds pause{40};
    const auto dragging = [] { return true; };
    for (int step = 1; step <= steps + rests; ++step) {
        const int part = std::min(step, steps);
        observer().movePointer(
            {from.x + (to.x - from.x) * part / steps, from.y + (to.y - from.y) * part / steps});
        static_cast<void>(e2e::staysTrue("it is dragged", dragging, pause));
    }
    observer().button(1, false);
}

void Guide::waitFor(const std::string& what, const std::function<bool()>& holds) {
    constexpr std::chrono::milliseconds bound{20000}; // a daily check begins after ten seconds
    if (const auto result = e2e::waitFor(what, holds, bound); !result)
        throw std::runtime_error(result.message());
}

void Guide::picture(const std::string& name) {
    waitFor("the screen comes to rest", [&] {
        const auto before = observer().imageOfRoot();
        return bool(e2e::staysTrue(
            "it rests", [&] { return observer().imageOfRoot().pixels == before.pixels; },
            std::chrono::milliseconds(250)));
    });
    e2e::saveScreenshot(observer(), options_.pictures + "/" + name + ".png");
}

} // namespace orrivane::tour
