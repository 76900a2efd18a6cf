#include "Tour.h"

#include "WaitFor.h"

#include <tests/linux/updater/support/TestReleases.h>

#include <array>
#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace orrivane::tour {

namespace {

constexpr const char* mirrorSwitch = "Show hidden icons beside the notch";
constexpr const char* iconSwitch = "Menu bar icon";

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

void Tour::fail(const std::string& sentence) {
    throw std::runtime_error(sentence);
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

std::string Tour::quit() {
    guide_->click("push button", "Quit");
    if (guide_->waitForEnd() != e2e::ExitStatus{0, {}})
        fail("the program did not end with 0");
    guide_->waitFor("its icon is gone", [&] { return !guide_->ownIcon(); });
    return "\"Quit\" ended the program with 0, and its icon is gone";
}

} // namespace orrivane::tour
