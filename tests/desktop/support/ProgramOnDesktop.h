#pragma once

#include "NotchedDesktop.h"
#include "ProgramWindows.h"
#include "WaitFor.h"

#include <map>

namespace orrivane::e2e {

/// The program on a notched desktop, seen and worked by a second connection.
class ProgramOnDesktop : public testing::Test {
  protected:
    using Settings = std::map<std::string, bool>;

    /// Four items, all in sight, and nothing that could lie over the program's windows.
    static const std::vector<std::string> fourItems;
    /// Everything in the main view is open; its own icon is where a test asks for it.
    static Settings everythingOpen(bool ownIcon);

    /// The desktop, with arguments of orrivane-desktop, and then the program on it.
    void start(const std::vector<std::string>& desktop, const Settings& settings,
               const Environment& extra = {});
    void startDesktop(const std::vector<std::string>& arguments) { desktop_.emplace(arguments); }
    void startProgram(const Environment& extra = {});
    /// Also for a program that runs.
    void store(const Settings& settings);
    /// Another launch of the program; how it ended.
    std::optional<ExitStatus> launchAgain();
    /// Another launch once the program is up, which brings its window.
    void bringWindow();
    /// Waits until the window has the keyboard and rests: `window_`.
    void settle() { window_ = windows().largeAtRest(openWidth, openHeight); }

    Observer& observer() { return desktop_->observer(); }
    ProgramWindows windows() { return {observer(), program_->pid()}; }
    std::optional<WindowState> ownIcon() { return windows().icon(); }
    /// Window or popover, as wide as it is with everything open.
    std::optional<WindowState> mainWindow() { return windows().large(openWidth, openHeight); }
    std::optional<WindowState> dialog() { return windows().dialogOver(window_.id); }
    bool isActive(const WindowState& window) { return observer().activeWindow() == window.id; }
    /// Names of the icons, left to right.
    std::vector<std::string> order();

    TempDirectory folder_; ///< for logs
    std::optional<NotchedDesktop> desktop_;
    std::optional<ChildProcess> program_;
    WindowState window_;

  private:
    static constexpr int openWidth = 900; // pixels
    static constexpr int openHeight = 400;

    ChildProcess launch(const std::string& log, const Environment& extra);
};

} // namespace orrivane::e2e
