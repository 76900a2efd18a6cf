#pragma once

namespace orrivane {

class EventPoster;
class GlobalPreferences;
class LoginService;
class MainWindow;
class Popover;
class ProcessLauncher;
class StatusBar;
class Updater;

/// One of each port that the tools and the shell use beside those of `Platform`. Owned by whoever
/// made the ports, which outlive it; the loop of `Platform` outlives all of them.
struct ShellPlatform {
    EventPoster& eventPoster;
    GlobalPreferences& globalPreferences;
    ProcessLauncher& processLauncher;
    LoginService& loginService;
    Updater& updater;
    StatusBar& statusBar;
    Popover& popover;
    MainWindow& mainWindow;

    /// Makes `platform` the one behind the shared instances and the static operations; once, before
    /// any of them is used. Tests inject instead.
    static void install(const ShellPlatform& platform);
    /// The installed platform; a programming error, and the end of the program, if there is none.
    static const ShellPlatform& installed();
};

} // namespace orrivane
