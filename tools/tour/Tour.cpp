#include "Tour.h"

#include "WaitFor.h"

#include <tests/linux/updater/support/TestReleases.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace orrivane::tour {

namespace {

constexpr xcb_keysym_t leftKey = 0xff51; // keysymdef.h
constexpr const char* packageName = "orrivane_9.0_amd64.deb";
constexpr const char* mirrorSwitch = "Show hidden icons beside the notch";
constexpr const char* iconSwitch = "Menu bar icon";
constexpr const char* checkButton = "Check for Updates…";
constexpr const char* updateButton = "Update to 9.0…";

[[noreturn]] void fail(const std::string& sentence) {
    throw std::runtime_error(sentence);
}

} // namespace

Tour::Tour(Options options)
    : options_(std::move(options))
    , package_("not a real package, but signed like one") {
    const auto path = std::string("/") + packageName;
    auto entry = release("9.0", feed_.address(path), package_);
    entry.notesFormat = "markdown";
    entry.notes = "**What is new**\n\n- Icons appear sooner after a wake-up\n"
                  "- The preview follows the slider without delay\n- Fixes for two screens";
    if (!signEntry(entry, testKeys().secretKey))
        fail("the release cannot be signed");
    feed_.serve("/feed.xml", "application/rss+xml", feed({entry}));
    feed_.serve(path, "application/x-debian-package", package_);
    feed_.start();
}

std::vector<std::string> Tour::programs() {
    return {"Xvfb", "dbus-daemon", "openbox"};
}

bool Tour::go(const std::atomic<bool>& interrupted) {
    using Step = std::string (Tour::*)();
    constexpr std::array<Step, 12> steps{&Tour::startForTheFirstTime,
                                         &Tour::openAndCloseThePopover,
                                         &Tour::openTheWindow,
                                         &Tour::findAnUpdate,
                                         &Tour::lookAtTheUpdate,
                                         &Tour::takeTheUpdate,
                                         &Tour::hideTheOwnIcon,
                                         &Tour::turnEverySwitch,
                                         &Tour::moveATile,
                                         &Tour::squeeze,
                                         &Tour::resetBothWays,
                                         &Tour::quit};
    int step = 0;
    try {
        for (const Step each : steps) {
            ++step;
            if (interrupted)
                fail("interrupted");
            std::cout << step << " ok: " << (this->*each)() << std::endl;
        }
        guide_.reset();
        return true;
    } catch (const std::exception& failure) {
        std::cout << step << " FAILED: " << failure.what() << "\n"
                  << (guide_ ? guide_->program().log() : std::string()) << "tour: failed at step "
                  << step << std::endl;
    }
    try {
        if (guide_)
            picture("failed");
    } catch (const std::exception& failure) {
        std::cout << "tour: no picture: " << failure.what() << std::endl;
    }
    guide_.reset();
    return false;
}

void Tour::arrive(const std::vector<std::string>& desktop) {
    guide_.reset();
    Guide::Options options;
    options.desktop = desktop;
    if (options_.dark)
        options.desktop.emplace_back("--dark");
    options.pictures = options_.pictures;
    options.program = options_.program;
    options.environment = {{"ORRIVANE_TOUR_FEED", feed_.address("/feed.xml")},
                           {"ORRIVANE_TOUR_KEY", testKeys().publicKey},
                           {"XDG_CACHE_HOME", home_.path() + "/cache"}};
    guide_.emplace(std::move(options));
}

void Tour::picture(const std::string& name) {
    const auto number = std::to_string(++pictures_);
    guide_->picture(std::string(options_.dark ? "dark-" : "light-") +
                    (number.size() < 2 ? "0" : "") + number + '-' + name);
}

std::string Tour::startForTheFirstTime() {
    arrive({"--items", "battery,wifi,volume,mail", "--panel", "14"});
    guide_->start();
    guide_->waitFor("the own icon is in the bar", [&] { return guide_->ownIcon().has_value(); });
    if (guide_->window())
        fail("a window opened by itself");
    picture("first-start");
    return "started for the first time; its icon is in the bar, and no window opened";
}

std::string Tour::openAndCloseThePopover() {
    const auto opens = [&] {
        guide_->clickAt(guide_->ownIcon().value().area.centre());
        guide_->waitFor("the popover opens", [&] { return guide_->window().has_value(); });
    };
    const auto closes = [&] {
        guide_->waitFor("the popover closes", [&] { return !guide_->window(); });
    };
    opens();
    picture("popover");
    guide_->clickAt(guide_->ownIcon().value().area.centre());
    closes();
    opens();
    const auto screen = guide_->observer().imageOfRoot();
    guide_->clickAt({screen.width / 8, screen.height - 40});
    closes();
    return "a click on the icon opened the popover, another closed it, and so did one elsewhere";
}

std::string Tour::openTheWindow() {
    guide_->clickAt(guide_->ownIcon().value().area.centre());
    guide_->waitFor("the popover opens", [&] { return guide_->window().has_value(); });
    const auto popover = guide_->window()->id;
    guide_->click("push button", "Open Window");
    guide_->waitFor("the window opens and the popover closes", [&] {
        const auto now = guide_->window();
        return now && now->id != popover && !guide_->find("push button", "Open Window");
    });
    picture("window");
    return "the button in the popover brought the window, and the popover closed";
}

std::string Tour::findAnUpdate() {
    const auto before = guide_->observer().imageOf(guide_->ownIcon().value().id).value();
    guide_->click("check box", "Check automatically");
    guide_->waitFor("the daily checks are on",
                    [&] { return guide_->isChecked("Check automatically"); });
    guide_->workElsewhere();
    guide_->waitFor("the icon has a badge", [&] {
        const auto icon = guide_->ownIcon();
        const auto now = icon ? guide_->observer().imageOf(icon->id) : std::optional<e2e::Image>();
        return now && now->pixels != before.pixels;
    });
    guide_->waitFor("the window tells the version", [&] { return guide_->shows("9.0"); });
    picture("badge");
    return "allowed daily checks; an update was found without a window, the icon has a badge";
}

std::string Tour::lookAtTheUpdate() {
    guide_->click("push button", updateButton);
    guide_->control("push button", "Install Update");
    guide_->waitFor("what is new shows",
                    [&] { return guide_->shows("A new version of Orrivane"); });
    picture("update");
    guide_->click("push button", "Remind Me Later");
    guide_->waitFor("the question is gone",
                    [&] { return !guide_->find("push button", "Install Update"); });
    return "asked for it; the offer says what is new, and \"Remind Me Later\" closed it";
}

std::string Tour::takeTheUpdate() {
    guide_->click("push button", checkButton);
    guide_->click("push button", "Install Update");
    guide_->control("push button", "OK");
    picture("update-verified");
    const auto path = home_.path() + "/cache/orrivane/updates/" + packageName;
    if (e2e::readFile(path) != package_)
        fail("the package is not where it should be");
    guide_->click("push button", "OK");
    return "installed it; the file was verified and handed over, nothing was run";
}

std::string Tour::hideTheOwnIcon() {
    arrive({"--panel", "16"});
    guide_->workElsewhere();
    guide_->start();
    guide_->waitFor("the tray shows", [&] { return guide_->strip().has_value(); });
    hidden_ = guide_->hidden();
    picture("tray");
    if (guide_->launchAgain() != 0)
        fail("a second launch failed");
    guide_->waitFor("the window comes", [&] { return guide_->window().has_value(); });
    picture("crowded-window");
    return "with a crowded bar " + std::to_string(hidden_) +
           " icons are hidden; launching again brought the window";
}

void Tour::turn(const std::string& name, const std::function<bool()>& took) {
    const bool before = guide_->isChecked(name);
    for (const bool wanted : {!before, before}) {
        guide_->click("check box", name);
        guide_->waitFor("\"" + name + "\" is " + (wanted ? "on" : "off"),
                        [&] { return guide_->isChecked(name) == wanted; });
        if (took && wanted != before)
            guide_->waitFor("\"" + name + "\" takes effect", took);
    }
}

std::string Tour::turnEverySwitch() {
    turn(mirrorSwitch, [&] { return !guide_->strip(); });
    guide_->waitFor("the tray is back", [&] { return guide_->strip().has_value(); });
    turn("Keep mirroring on the notched screen while external displays are connected", {});
    turn("Launch at login", [&] {
        return std::filesystem::exists(guide_->desktop().configFolder() +
                                       "/autostart/orrivane.desktop");
    });
    turn("Check automatically", {});
    turn(iconSwitch, [&] { return !guide_->ownIcon(); });
    guide_->waitFor("the icon is back", [&] { return guide_->ownIcon().has_value(); });
    return "turned every switch; each took effect and was turned back";
}

std::string Tour::moveATile() {
    guide_->click("push button", "Show icon list");
    const auto before = guide_->order();
    guide_->waitFor("the tiles show", [&] { return guide_->tiles().size() == before.size(); });
    picture("arrange");
    // From the middle, where tiles are visible and not hidden by the notch, two places to the left.
    const auto tiles = guide_->tiles();
    const auto moved = tiles.size() / 2 + 2;
    const auto target = tiles[moved - 2];
    guide_->drag(tiles[moved].centre(), {target.x + 2, target.centre().y});
    auto expected = before;
    const auto from = expected.begin() + static_cast<std::ptrdiff_t>(moved);
    std::rotate(from - 2, from, from + 1);
    guide_->waitFor("the bar has the new order", [&] { return guide_->order() == expected; });
    picture("arranged");
    guide_->click("push button", "Hide icon list");
    return "dragged the tile of \"" + before[moved] +
           "\" two places to the left; the real item moved with it";
}

void Tour::answer(const std::string& button) {
    guide_->click("push button", button);
    guide_->waitFor("the question is gone", [&] { return !guide_->find("push button", "Cancel"); });
}

std::string Tour::squeeze() {
    guide_->click("check box", "Tighten macOS icon spacing");
    const auto slider = guide_->control("slider", "Spacing");
    widths_ = guide_->widths();
    guide_->clickAt(guide_->place(slider).centre());
    for (int step = 0; step < 12; ++step)
        guide_->observer().tapKey(leftKey);
    guide_->waitFor("the preview follows", [&] { return guide_->shows("At spacing 4"); });
    const auto prediction = guide_->text("→ ");
    picture("squeeze");
    guide_->click("push button", "Apply & Restart Menu Bar");
    guide_->control("push button", "Cancel");
    picture("squeeze-question");
    answer("Apply & Restart");
    guide_->waitFor("the bar is tighter", [&] {
        const auto now = guide_->widths();
        return now.size() == widths_.size() && std::ranges::all_of(now, [&](const auto& each) {
                   const auto was = widths_.find(each.first);
                   return was != widths_.end() && each.second == was->second - 12;
               });
    });
    if (guide_->hidden() >= hidden_ + 1)
        fail("more icons are hidden than before");
    const auto now = guide_->hidden();
    guide_->waitFor("the window tells it", [&] { return guide_->shows("Applied: 4"); });
    picture("squeezed");
    return "squeezed the bar; every item is 12 points narrower, " + std::to_string(now) +
           " icons are hidden instead of " + std::to_string(hidden_) + "; the preview had said \"" +
           prediction + "\"";
}

std::string Tour::resetBothWays() {
    const auto file = guide_->desktop().configFolder() + "/orrivane/menu-bar.conf";
    const auto stored = [&] {
        return e2e::readFile(file).find("NSStatusItemSpacing") != std::string::npos;
    };
    guide_->click("push button", "Reset to Default");
    guide_->control("push button", "Cancel");
    picture("reset-question");
    answer("Reset Without Restart");
    guide_->waitFor("the preference is gone", [&] { return !stored(); });
    if (guide_->widths() == widths_)
        fail("the bar changed without a restart");
    guide_->click("push button", "Reset to Default");
    guide_->control("push button", "Cancel");
    answer("Reset & Restart Menu Bar");
    guide_->waitFor("the bar is as it was", [&] { return guide_->widths() == widths_; });
    picture("reset");
    return "reset the spacing without a restart, then with one; the bar is as it was";
}

std::string Tour::quit() {
    guide_->click("push button", "Quit");
    if (guide_->waitForEnd() != e2e::ExitStatus{0, {}})
        fail("the program did not end with 0");
    guide_->waitFor("its icon is gone", [&] { return !guide_->ownIcon(); });
    return "\"Quit\" ended the program with 0, and its icon is gone";
}

} // namespace orrivane::tour
