#include "Story.h"

#include "Desktop.h"
#include "Screenshot.h"
#include "WaitFor.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include <sys/wait.h>
#include <xcb/screensaver.h>

namespace orrivane::demo {

namespace {

constexpr xcb_keysym_t downKey = 0xff54; // keysymdef.h
constexpr xcb_keysym_t enterKey = 0xff0d;

[[noreturn]] void fail(const std::string& sentence) {
    throw std::runtime_error(sentence);
}

void require(const testing::AssertionResult& result, const std::string& deed) {
    if (!result)
        fail(deed + ", but " + result.message());
}

std::size_t number(const std::vector<e2e::WindowState>& icons) {
    return icons.size();
}

} // namespace

Story::Story(Options options)
    : options_(std::move(options)) {}

std::vector<std::string> Story::programs() {
    return {"Xvfb", "dbus-daemon", "openbox"};
}

bool Story::tell(const std::atomic<bool>& interrupted) {
    using Step = std::string (Story::*)();
    constexpr std::array<Step, 11> steps{
        &Story::openTheDesktop, &Story::startOrrivane,     &Story::clickACell,
        &Story::lookAtTheMenu,  &Story::chooseAnEntry,     &Story::bringALongMenu,
        &Story::killTheBar,     &Story::killAnApplication, &Story::sleepAndWake,
        &Story::addAScreen,     &Story::endEverything};
    std::filesystem::create_directories(options_.pictures);
    int step = 0;
    try {
        for (const Step each : steps) {
            ++step;
            if (interrupted)
                fail("interrupted");
            const std::string seen = (this->*each)();
            takePicture("step-" + std::to_string(step));
            std::cout << step << " ok: " << seen << std::endl;
        }
        return true;
    } catch (const std::exception& failure) {
        std::cout << step << " FAILED: " << failure.what() << "\n"
                  << (program_ ? program_->log() : std::string()) << "demo: failed at step " << step
                  << std::endl;
    }
    takeLastPicture();
    end();
    return false;
}

void Story::open(const std::vector<std::string>& arguments) {
    desktop_.emplace(arguments);
    if (options_.sabotage)
        desktop_->observer().deleteProperty(desktop_->observer().root(),
                                            "_ORRIVANE_DISPLAY_CUTOUT");
}

void Story::run() {
    e2e::ChildProcess::Options options;
    options.arguments = {e2e::Desktop::programPath()};
    options.environment = desktop_->environment();
    options.logFile = folder_.path() + "/orrivane.log";
    program_.emplace(std::move(options));
    witness_.emplace(*desktop_, *program_);
}

std::string Story::openTheDesktop() {
    open({"--panel", "16"});
    bringToFront("Notes");
    const auto icons = desktop_->icons();
    return "opened a desktop with a notch and " + std::to_string(number(icons)) +
           " status items: " + listed(icons);
}

std::string Story::startOrrivane() {
    run();
    mirrored_ = waitForStrip("started Orrivane");
    return "started Orrivane; of " + std::to_string(number(witness_->hidden())) +
           " hidden icons the tray left of the notch shows " + listed(mirrored_);
}

std::string Story::clickACell() {
    const auto& icon = mirrored_.back();
    const auto cell = witness_->lastCell(mirrored_);
    desktop_->observer().click(cell.centre());
    menu_ = e2e::waitForValue<e2e::WindowState>("its menu opens",
                                                [&] { return witness_->menuOf(icon); });
    require(e2e::waitFor("the pointer is back on the cell",
                         [&] { return desktop_->observer().pointer() == cell.centre(); }),
            "clicked a cell");
    return "clicked the mirrored " + listed({icon}) +
           "; the menu of that process is open and the pointer where it was";
}

std::string Story::lookAtTheMenu() {
    require(e2e::staysTrue(
                "the menu is above the tray", [&] { return witness_->isAboveStrip(menu_.id); },
                std::chrono::milliseconds(2500)),
            "left the menu open");
    return "left the menu open for a while; it stayed above the tray";
}

std::string Story::chooseAnEntry() {
    desktop_->observer().tapKey(downKey);
    desktop_->observer().tapKey(enterKey);
    require(e2e::waitFor("the application got the choice",
                         [&] { return !desktop_->choices().empty(); }),
            "chose an entry");
    mirrored_ = waitForStrip("closed the menu");
    auto choice = desktop_->choices();
    return "chose an entry; the application wrote \"" + choice.substr(0, choice.find('\n')) +
           "\" and the menu is closed";
}

std::string Story::bringALongMenu() {
    const auto before = number(waitForStrip("before the long menus"));
    bringToFront("Sketch");
    require(e2e::waitFor("fewer icons are mirrored",
                         [&] {
                             const auto now = witness_->mirrored();
                             return now && number(*now) < before;
                         }),
            "brought an application with longer menus to the front");
    const auto fewer = number(witness_->mirrored().value_or(std::vector<e2e::WindowState>{}));
    takePicture("step-6-long-menus");
    bringToFront("Notes");
    require(e2e::waitFor("all of them are back",
                         [&] {
                             const auto now = witness_->mirrored();
                             return now && number(*now) == before;
                         }),
            "brought the one with short menus back");
    return "brought longer menus to the front; room for " + std::to_string(fewer) + " of " +
           std::to_string(before) + " icons; with the short ones there is room for all again";
}

std::string Story::killTheBar() {
    const auto icons = number(desktop_->icons());
    const auto bar = desktop_->processesOf("ControlCenter").at(0);
    kill(bar, SIGKILL);
    require(e2e::waitFor("another bar holds every item",
                         [&] {
                             const auto bars = desktop_->processesOf("ControlCenter");
                             return bars.size() == 1 && bars[0] != bar &&
                                    number(desktop_->icons()) == icons;
                         }),
            "killed the menu bar");
    mirrored_ = waitForStrip("killed the menu bar");
    return "killed the menu bar; it is back with all " + std::to_string(icons) +
           " items, and the tray shows " + listed(mirrored_);
}

std::string Story::killAnApplication() {
    const auto victim = mirrored_.back();
    const auto process = desktop_->observer().pidOf(victim.id);
    if (!process)
        fail("an icon has no process");
    kill(*process, SIGKILL);
    const auto isBack = [&] {
        const auto icon = desktop_->icon(victim.instanceName);
        return icon && icon->id != victim.id && desktop_->observer().pidOf(icon->id) != process;
    };
    require(e2e::waitFor("it is started again", isBack), "killed an application");
    mirrored_ = waitForStrip("killed an application");
    return "killed " + listed({victim}) +
           "; its cell went with it, it was started again, and the tray shows " + listed(mirrored_);
}

std::string Story::sleepAndWake() {
    blank(true);
    require(e2e::waitFor("the tray hides", [&] { return !witness_->strip(); }),
            "put the screen to sleep");
    blank(false);
    require(e2e::staysTrue(
                "the tray stays away", [&] { return !witness_->strip(); },
                std::chrono::milliseconds(2500)),
            "woke the screen");
    mirrored_ = waitForStrip("woke the screen");
    return "put the screen to sleep, the tray hid; woke it, and after three seconds it is back";
}

std::string Story::addAScreen() {
    end();
    open({"--panel", "16", "--screens", "2"});
    bringToFront("Notes");
    run();
    mirrored_ = waitForStrip("opened a desktop with two screens");
    const auto strip = witness_->strip();
    if (!strip)
        fail("opened a desktop with two screens, but the tray has gone again");
    return "opened a desktop with a second screen; the tray stays beside the notch, from " +
           std::to_string(strip->area.x) + " to " + std::to_string(strip->area.right());
}

std::string Story::endEverything() {
    const auto status = program_->terminate(e2e::defaultBound);
    if (status != e2e::ExitStatus{0, {}})
        fail("told Orrivane to end, but it did not end with 0");
    const auto below = e2e::descendants(desktop_->session().pid());
    end();
    for (const pid_t process : below)
        if (kill(process, 0) == 0)
            fail("ended everything, but process " + std::to_string(process) + " is left");
    if (waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD)
        fail("ended everything, but a process is left");
    return "ended everything; Orrivane exited with 0, and no process is left";
}

void Story::end() {
    witness_.reset();
    program_.reset();
    desktop_.reset();
}

std::vector<e2e::WindowState> Story::waitForStrip(const std::string& deed) {
    std::vector<e2e::WindowState> seen;
    const auto right =
        e2e::waitFor("the strip shows a run of hidden icons that ends at the notch", [&] {
            const auto now = witness_->mirrored();
            seen = now.value_or(std::vector<e2e::WindowState>{});
            return !seen.empty();
        });
    require(right, deed);
    return seen;
}

void Story::bringToFront(const std::string& className) {
    const auto window = e2e::waitForValue<e2e::WindowState>("the window of " + className, [&] {
        std::optional<e2e::WindowState> found;
        for (const auto& each : desktop_->observer().tree())
            if (each.isViewable() && each.className == className && each.area.width > 200)
                found = each;
        return found;
    });
    // Beside its title, where no other window lies and nothing else answers.
    const int fromEdge = window.area.width / 4;
    desktop_->observer().click(
        {className == "Notes" ? window.area.x + fromEdge : window.area.right() - fromEdge,
         window.area.y + 16});
}

void Story::blank(bool blanked) {
    auto* raw = desktop_->observer().connection();
    xcb_force_screen_saver(raw, blanked ? XCB_SCREEN_SAVER_ACTIVE : XCB_SCREEN_SAVER_RESET);
    xcb_flush(raw);
}

void Story::takePicture(const std::string& name) {
    if (desktop_)
        e2e::saveScreenshot(desktop_->observer(), options_.pictures + "/" + name + ".png");
}

/// Of what was wrong; the server may be what is wrong, then there is none.
void Story::takeLastPicture() try { takePicture("failed"); } catch (const std::exception& failure) {
    std::cout << "demo: no picture: " << failure.what() << std::endl;
}

} // namespace orrivane::demo
