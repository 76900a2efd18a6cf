#include "Guide.h"

#include "Drag.h"
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
    reading_.emplace(desktop_.environment().at("DBUS_SESSION_BUS_ADDRESS"), program_->pid());
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
    return windows().icon();
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
    return windows().large(smallestWindow, smallestWindow);
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

std::optional<e2e::AccessibleNode> Guide::find(const std::string& role, const std::string& name) {
    return reading_->find({role, name});
}

e2e::AccessibleNode Guide::control(const std::string& role, const std::string& name) {
    return e2e::waitForValue<e2e::AccessibleNode>("the " + role + " \"" + name + "\" shows",
                                                  [&] { return find(role, name); });
}

std::string Guide::text(const std::string& part) {
    for (const auto& each : reading_->shown())
        if (auto name = tree().name(each); name.find(part) != std::string::npos)
            return name;
    return {};
}

std::vector<e2e::PixelRect> Guide::tiles() {
    std::vector<e2e::PixelRect> result;
    for (const auto& each : reading_->ofRole("list item"))
        result.push_back(place(each));
    return result;
}

bool Guide::isChecked(const std::string& name) {
    const auto node = find("check box", name);
    return node && tree().has(*node, e2e::AccessibleTree::checked);
}

e2e::PixelRect Guide::placeAtRest(const e2e::AccessibleNode& node) {
    constexpr std::chrono::milliseconds rest{200};
    return e2e::waitForValue<e2e::PixelRect>("a control comes to rest", [&] {
        const auto before = place(node);
        const auto isSame = [&] { return place(node) == before; };
        const bool rests = bool(e2e::staysTrue("it rests", isSame, rest));
        return rests ? std::optional(before) : std::nullopt;
    });
}

void Guide::click(const std::string& role, const std::string& name) {
    const auto node = control(role, name);
    for (int tries = 0; tries < 5; ++tries) {
        const auto found = bringIntoView(node);
        clickAt(found.centre());
        if (tookClick(node, found))
            return;
    }
    throw std::runtime_error("the " + role + " \"" + name + "\" does not keep still");
}

e2e::PixelRect Guide::bringIntoView(const e2e::AccessibleNode& node) {
    const auto found = placeAtRest(node);
    // Dialogs stand in windows of their own, which need no scrolling.
    const auto large = window();
    if (!large || large->area.contains(found.centre()))
        return found;
    const auto isWithin = [&](const e2e::PixelRect& rect) {
        const auto centre = rect.centre();
        return centre.y > large->area.y + 40 && centre.y < large->area.bottom() - 10;
    };
    // The window answers the wheel late, and may then have gone too far.
    for (int turns = 0; turns < 60; ++turns) {
        const auto now = place(node);
        if (isWithin(now) && isWithin(placeAtRest(node)))
            break;
        observer().click(large->area.centre(),
                         now.centre().y < large->area.centre().y ? wheelUp : wheelDown);
        e2e::pollPause();
    }
    return placeAtRest(node);
}

// A line that comes or goes above a control moves it, perhaps just before the click arrives where
// the control was. Every control takes the keyboard when it is clicked.
bool Guide::tookClick(const e2e::AccessibleNode& node, const e2e::PixelRect& before) {
    constexpr std::chrono::milliseconds bound{1000};
    const auto arrives = e2e::waitFor(
        "the click arrives",
        [&] {
            return !tree().has(node, e2e::AccessibleTree::showing) ||
                   tree().has(node, e2e::AccessibleTree::focused);
        },
        bound);
    // Behind a question that it has brought, it has no keyboard.
    return arrives || place(node) == before;
}

void Guide::clickInto(const std::string& role, const std::string& name) {
    click(role, name);
    // The window manager holds the click back for a moment, and keys overtake it.
    waitFor("the " + role + " \"" + name + "\" has the keyboard", [&] {
        const auto node = find(role, name);
        return node && tree().has(*node, e2e::AccessibleTree::focused);
    });
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
    if (const auto result = e2e::dragByHand(observer(), program_->pid(), from, to); !result)
        throw std::runtime_error(result.message());
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
