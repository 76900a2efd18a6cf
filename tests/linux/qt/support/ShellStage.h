#pragma once

#include "Pump.h"

#include <linux/x11/Connection.h>
#include <tests/linux/x11/support/FakeTray.h>

#include <ChildProcess.h>
#include <Observer.h>
#include <PrivateXServer.h>
#include <TempDirectory.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {

/// A display of the test's own with a tray that takes what asks to be docked, and with a window
/// manager if a test wants one. There is one in a process, older than the application object.
class ShellStage {
  public:
    /// Throws std::runtime_error without an X server.
    ShellStage();
    ~ShellStage() { current_ = nullptr; }
    ShellStage(const ShellStage&) = delete;
    ShellStage& operator=(const ShellStage&) = delete;

    static ShellStage& current() { return *current_; }

    [[nodiscard]] const std::string& display() const { return server_.display(); }
    [[nodiscard]] std::string folder() const { return directory_.path(); }
    e2e::Observer& eyes() { return eyes_; }

    /// A connection of the port's kind. Throws std::runtime_error when there can be none.
    [[nodiscard]] std::unique_ptr<x11::Connection> connect() const;

    /// Absent, or why there is none.
    std::optional<std::string> startWindowManager();
    void stopWindowManager();

    /// Docked icons that can be seen, in the order they came in.
    std::vector<e2e::WindowState> icons();
    /// Asks a window to close as its title bar's button does.
    void askToClose(xcb_window_t window);

    /// Runs the application and the tray until `holds`; false after a bound.
    template <typename Condition>
    bool pumpUntil(Condition holds) {
        return orrivane::pumpUntil([&] {
            serveTray();
            return holds();
        });
    }

  private:
    void serveTray();

    static ShellStage* current_;
    e2e::TempDirectory directory_;
    e2e::PrivateXServer server_;
    e2e::Observer eyes_;
    x11::FakeTray tray_;
    std::vector<xcb_window_t> docked_;
    std::optional<e2e::ChildProcess> manager_;
    int nextX_ = 1300;
};

/// The base of the worlds on that stage: with a window manager, or on the bare server.
template <bool managed>
struct ShellWorld {
    ShellStage& stage = ShellStage::current();
    std::optional<std::string> missing =
        managed ? stage.startWindowManager() : std::optional<std::string>();

    ShellWorld() = default;
    ShellWorld(const ShellWorld&) = delete;
    ShellWorld& operator=(const ShellWorld&) = delete;
    ~ShellWorld() { stage.stopWindowManager(); }

    [[nodiscard]] std::optional<std::string> whyUnavailable() const { return missing; }
    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        return stage.pumpUntil(holds);
    }
};

} // namespace orrivane
