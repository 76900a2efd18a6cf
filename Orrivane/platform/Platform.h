#pragma once

namespace orrivane {

class Accessibility;
class MainLoop;
class OwnWindows;
class ScreenCapture;
class Screens;
class SystemLog;
class TrayPanel;
class UserDefaults;
class WindowList;
class Workspace;

/// One of each port that the running services use. Owned by whoever made the ports, which outlive
/// it; the loop outlives all of them.
struct Platform {
    MainLoop& mainLoop;
    Screens& screens;
    WindowList& windowList;
    OwnWindows& ownWindows;
    Accessibility& accessibility;
    ScreenCapture& screenCapture;
    UserDefaults& userDefaults;
    Workspace& workspace;
    TrayPanel& trayPanel;
    SystemLog& log;

    /// Makes `platform` the one behind the shared instances and the static operations; once, before
    /// any of them is used. Tests inject instead.
    static void install(const Platform& platform);
    /// The installed platform; a programming error, and the end of the program, if there is none.
    static const Platform& installed();
};

} // namespace orrivane
