#include "Story.h"

#include "Picture.h"
#include "WaitFor.h"
#include "Wallpaper.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include <poll.h>
#include <sys/wait.h>

namespace orrivane::demo {

namespace {

constexpr int screenWidth = 1280;
constexpr int screenHeight = 720;
constexpr int barHeight = 37;
constexpr int notchWidth = 185;
constexpr std::size_t hiddenCount = 4;
/// Away from everything that answers to a pointer.
constexpr e2e::PixelPoint restingPlace{screenWidth / 4, screenHeight / 3};
constexpr const char* hostName = "tint2";
constexpr const char* clickedName = "kteatime";
constexpr const char* killedName = "parcellite";
const std::vector<std::string> clientNames{"qjackctl",   "kteatime",      "gxkb",
                                           "parcellite", "xfce4-clipman", "volumeicon"};

[[noreturn]] void fail(const std::string& sentence) {
    throw std::runtime_error(sentence);
}

e2e::Desktop::Options desktopOptions(const std::string& nestedIn) {
    e2e::Desktop::Options options;
    options.host = hostName;
    options.server.width = screenWidth;
    options.server.height = screenHeight;
    // One point is one pixel whatever the screen around the window is like.
    options.server.extraArguments = {"-dpi", "96"};
    options.server.nestedIn = nestedIn;
    options.trayRight = screenWidth / 2 + notchWidth / 2 + 60;
    options.barHeight = barHeight;
    return options;
}

e2e::DockedClient& clientCalled(e2e::Desktop& desktop, const std::string& name) {
    for (auto& client : desktop.clients())
        if (client.kind->name == name)
            return client;
    fail(name + " does not run");
}

} // namespace

Story::Story(Options options)
    : options_(std::move(options)) {}

std::vector<std::string> Story::programs(const Options& options) {
    std::vector<std::string> all{options.nestedIn.empty() ? "Xvfb" : "Xephyr", "dbus-daemon",
                                 "openbox", hostName};
    all.insert(all.end(), clientNames.begin(), clientNames.end());
    return all;
}

bool Story::tell(const std::atomic<bool>& interrupted) {
    using Step = std::string (Story::*)();
    constexpr std::array<Step, 8> steps{&Story::openTheDesktop,    &Story::layTheNotch,
                                        &Story::startOrrivane,     &Story::clickACell,
                                        &Story::lookAtTheMenu,     &Story::closeTheMenu,
                                        &Story::killAnApplication, &Story::endEverything};
    std::filesystem::create_directories(options_.pictures);
    if (!options_.nestedIn.empty())
        std::cout << "No server can hide pixels as a notch does: in the window a bracket below the "
                     "bar marks its columns, the pictures show it black."
                  << std::endl;
    int number = 0;
    try {
        for (const Step step : steps) {
            ++number;
            if (interrupted)
                fail("interrupted");
            const std::string seen = (this->*step)();
            takePicture("step-" + std::to_string(number));
            std::cout << number << " ok: " << seen << std::endl;
            pause(1500);
        }
        return true;
    } catch (const std::exception& failure) {
        std::cout << number << " FAILED: " << failure.what() << "\n"
                  << programLog() << "demo: failed at step " << number << std::endl;
    }
    takeLastPicture();
    end();
    return false;
}

std::string Story::openTheDesktop() {
    desktop_.emplace(desktopOptions(options_.nestedIn));
    paintWallpaper(desktop_->observer(), barHeight, {});
    for (const auto& name : clientNames)
        desktop_->startClient(name);
    witness_.emplace(*desktop_, e2e::PixelRect{});
    const auto icons = witness_->tray();
    if (icons.size() != clientNames.size())
        fail("the tray holds " + listed(icons) + " instead of " + listed(clientNames));
    return std::string("started a desktop with ") + hostName + " and " +
           std::to_string(clientNames.size()) + " applications; its tray holds " + listed(icons);
}

std::string Story::layTheNotch() {
    desktop_->settledIcons();
    const auto icons = witness_->tray();
    const int right = icons.at(hiddenCount - 1).window.area.right();
    const e2e::PixelRect notch{right - notchWidth, 0, notchWidth, barHeight};
    witness_.emplace(*desktop_, notch);
    if (!options_.sabotage)
        desktop_->setCutout(notch.x, notch.right());
    // Only pictures can show a notch as black as it is; in a window a bracket tells where it is.
    paintWallpaper(desktop_->observer(), barHeight,
                   options_.nestedIn.empty() ? e2e::PixelRect{} : notch);
    const auto hidden = witness_->hidden();
    if (hidden.size() != hiddenCount)
        fail("the notch hides " + listed(hidden));
    return "laid a notch over the columns " + std::to_string(notch.x) + " to " +
           std::to_string(notch.right()) + "; it hides " + listed(hidden);
}

std::string Story::startOrrivane() {
    desktop_->observer().movePointer(restingPlace);
    program_ = &desktop_->startProgram();
    waitForRightStrip("started Orrivane");
    const int right = desktop_->waitForStrip().area.right();
    return "started Orrivane; the strip shows " + listed(witness_->hidden()) + " and ends at " +
           std::to_string(right) + ", " + std::to_string(witness_->notch().x - right) +
           " points left of the notch";
}

std::string Story::clickACell() {
    clicked_ = &clientCalled(*desktop_, clickedName);
    const auto cell = witness_->cellOf(*clicked_);
    if (!cell)
        fail(std::string(clickedName) + " has no cell");
    // Low in the cell, so that the pointer leaves the icon to be seen.
    const e2e::PixelPoint place{cell->centre().x + 2, cell->bottom() - 9};
    glideTo(place);
    desktop_->observer().click(place, clicked_->kind->menuButton);
    menu_ = e2e::waitForValue<e2e::WindowState>("its menu opens", [&] {
        const auto popups = desktop_->popupsOf(clicked_->icon);
        return popups.empty() ? std::nullopt : std::optional(popups.back());
    });
    const auto pid = desktop_->observer().pidOf(menu_.id);
    if (pid != clicked_->process.pid())
        fail(std::string("clicked the cell of ") + clickedName + ", but the menu is another's");
    if (const auto back = e2e::waitFor("the pointer is back on the cell",
                                       [&] { return desktop_->observer().pointer() == place; });
        !back)
        fail(back.message());
    savePicture(desktop_->observer(), witness_->notch(), options_.pictures + "/tray.png",
                e2e::PixelRect{screenWidth / 2 - 320, 0, 640, menu_.area.bottom() + 20});
    return std::string("clicked the cell of ") + clickedName + "; a menu of its process " +
           std::to_string(*pid) + " is open, and the pointer is on the cell";
}

std::string Story::lookAtTheMenu() {
    if (const auto stays = e2e::staysTrue(
            "the menu is above the strip", [&] { return witness_->isAboveStrip(menu_.id); },
            std::chrono::milliseconds(1500));
        !stays)
        fail(stays.message());
    return "left the menu open for a while; it stayed above the strip";
}

std::string Story::closeTheMenu() {
    desktop_->closeMenu(menu_);
    glideTo(restingPlace);
    waitForRightStrip("closed the menu");
    if (!desktop_->popupsOf(clicked_->icon).empty())
        fail("closed the menu, but one is still open");
    return "pressed Escape; no menu is open, the strip shows " + listed(witness_->hidden());
}

std::string Story::killAnApplication() {
    auto& victim = clientCalled(*desktop_, killedName);
    if (!witness_->cellOf(victim))
        fail(std::string(killedName) + " has no cell that could go");
    const auto before = witness_->tray().size();
    victim.process.kill();
    if (const auto gone = e2e::waitFor("its icon leaves the tray",
                                       [&] { return witness_->tray().size() == before - 1; });
        !gone)
        fail(gone.message());
    waitForRightStrip(std::string("killed ") + killedName);
    return std::string("killed ") + killedName + "; its cell is gone, the strip shows " +
           listed(witness_->hidden());
}

std::string Story::endEverything() {
    const auto status = program_->terminate(e2e::defaultBound);
    if (status != e2e::ExitStatus{0, {}})
        fail("told Orrivane to end, but it did not end with 0");
    if (!desktop_->programWindows().empty())
        fail("Orrivane ended, but has windows left");
    end();
    // Whatever any of them left behind would have become a child of this process.
    if (waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD)
        fail("ended everything, but a process is left");
    return "ended everything; Orrivane exited with 0, and no process is left";
}

void Story::end() {
    program_ = nullptr;
    clicked_ = nullptr;
    witness_.reset();
    desktop_.reset();
}

void Story::waitForRightStrip(const std::string& deed) {
    std::optional<std::string> complaint;
    const auto right = e2e::waitFor("the strip is right", [&] {
        complaint = witness_->complaint();
        return !complaint;
    });
    if (!right)
        fail(deed + ", but " + complaint.value_or("the strip shows something else now and then"));
}

void Story::glideTo(const e2e::PixelPoint& place) {
    auto& observer = desktop_->observer();
    const auto from = observer.pointer();
    constexpr int stops = 40;
    for (int stop = 1; stop <= stops; ++stop) {
        observer.movePointer({from.x + (place.x - from.x) * stop / stops,
                              from.y + (place.y - from.y) * stop / stops});
        pause(20);
    }
}

/// For the eye of who watches; without one nothing waits.
void Story::pause(int milliseconds) const {
    if (!options_.nestedIn.empty())
        poll(nullptr, 0, milliseconds);
}

void Story::takePicture(const std::string& name) {
    if (desktop_ && witness_)
        savePicture(desktop_->observer(), witness_->notch(),
                    options_.pictures + "/" + name + ".png");
}

/// Of what was wrong; the server may be what is wrong, then there is none.
void Story::takeLastPicture() try { takePicture("failed"); } catch (const std::exception& failure) {
    std::cout << "demo: no picture: " << failure.what() << std::endl;
}

std::string Story::programLog() const {
    const std::string log = program_ != nullptr ? program_->log() : std::string();
    return log.empty() ? log : "Orrivane wrote:\n" + log;
}

} // namespace orrivane::demo
