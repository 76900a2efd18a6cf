#include <Orrivane/platform/Host.h>

#include <Orrivane/platform/ApplicationDelegate.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ShellPlatform.h>

#import <macos/appkit/AppKitMainWindow.h>
#import <macos/appkit/AppKitOwnWindows.h>
#import <macos/appkit/AppKitPopover.h>
#import <macos/appkit/AppKitScreens.h>
#import <macos/appkit/AppKitStatusBar.h>
#import <macos/appkit/AppKitTrayPanel.h>
#import <macos/appkit/AppKitWorkspace.h>
#import <macos/appkit/AppLoginService.h>
#import <macos/appkit/ApplicationBridge.h>
#import <macos/appkit/FoundationUserDefaults.h>
#import <macos/appkit/KitScreenCapture.h>
#import <macos/appkit/MainMenu.h>
#import <macos/appkit/MakeUpdater.h>
#import <macos/appkit/RunLoopMainLoop.h>
#import <macos/appkit/RunningApplications.h>
#import <macos/appkit/SignalWatcher.h>
#import <macos/appkit/SingleInstance.h>
#import <macos/appkit/TaskLauncher.h>
#import <macos/appkit/UnifiedLog.h>
#include <macos/system/AXAccessibility.h>
#include <macos/system/CFGlobalPreferences.h>
#include <macos/system/CFRef.h>
#include <macos/system/CGEventPoster.h>
#include <macos/system/QuartzWindowList.h>

#import <AppKit/AppKit.h>

namespace orrivane {

namespace {

/// The Mac's desktop: AppKit over the window server, accessibility and ScreenCaptureKit.
class AppKitHost : public Host {
  public:
    AppKitHost()
        : accessibility_({running::applications, running::menuBarOwner, running::frontmost})
        , updater_(makeUpdater([this] { popover_.performClose(); }))
        , platform_{loop_,          screens_,  windowList_, ownWindows_, accessibility_,
                    screenCapture_, defaults_, workspace_,  panel_,      log_}
        , shell_{eventPoster_, preferences_, launcher_, login_,
                 *updater_,    statusBar_,   popover_,  window_} {}

    const Platform& platform() override { return platform_; }
    const ShellPlatform& shellPlatform() override { return shell_; }

    // The system starts a bundle once only; it knows nothing of an executable outside of one.
    Claim claim() override {
        if (instance_.claim([this](InstanceCommand command) { obey(command); }))
            return Claim::made;
        return instance_.tell(InstanceCommand::open) ? Claim::toldTheOther : Claim::unanswered;
    }
    std::optional<std::int32_t> runningElsewhere() override { return instance_.runningElsewhere(); }
    bool quitOther() override { return instance_.tell(InstanceCommand::quit); }

    std::string arrangeLimitation() override { return {}; }
    std::string squeezeLimitation() override { return {}; }

    int run(ApplicationDelegate& delegate) override {
        @autoreleasepool {
            const SignalWatcher signals([this] { workspace_.terminate(); });
            bridge_ = [[ORVApplicationDelegate alloc]
                initWithDelegate:&delegate
                         willEnd:[this] { eventPoster_.releaseAll(); }];
            NSApp.delegate = bridge_;
            NSApp.mainMenu = makeMainMenu();
            // With its icon hidden and an empty tray the program looks idle, and the system would
            // slow its timers down.
            id<NSObject> activity = [NSProcessInfo.processInfo
                beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                  reason:@"Watches the menu bar"];
            [NSApp run];
            [NSProcessInfo.processInfo endActivity:activity];
            NSApp.delegate = nil;
            bridge_ = nil;
        }
        return 0;
    }

  private:
    void obey(InstanceCommand command) {
        if (command == InstanceCommand::quit)
            workspace_.terminate();
        else if (command == InstanceCommand::open)
            [bridge_ reopenWithVisibleWindows:window_.isVisible()];
    }

    RunLoopMainLoop loop_;
    AppKitScreens screens_;
    QuartzWindowList windowList_;
    AppKitOwnWindows ownWindows_;
    AXAccessibility accessibility_;
    KitScreenCapture screenCapture_;
    FoundationUserDefaults defaults_;
    AppKitWorkspace workspace_;
    AppKitTrayPanel panel_;
    UnifiedLog log_;
    CGEventPoster eventPoster_;
    CFGlobalPreferences preferences_;
    TaskLauncher launcher_;
    AppLoginService login_;
    std::unique_ptr<Updater> updater_;
    AppKitStatusBar statusBar_;
    AppKitPopover popover_;
    AppKitMainWindow window_;
    SingleInstance instance_;
    ORVApplicationDelegate* bridge_ = nil; // the application object does not keep it
    Platform platform_;
    ShellPlatform shell_;
};

// Without one, the application object ends the process.
bool hasDesktop() {
    return static_cast<bool>(CFRef<CFDictionaryRef>::adopting(CGSessionCopyCurrentDictionary()));
}

} // namespace

std::unique_ptr<Host> Host::create(int& /*argc*/, char** /*argv*/, std::string& problem) {
    @autoreleasepool {
        if (!hasDesktop()) {
            problem = "there is no desktop here; start it where you are logged in at the screen.";
            return nullptr;
        }
        [NSApplication sharedApplication];
        return std::make_unique<AppKitHost>();
    }
}

std::optional<std::string> Host::storeCutout(const Rect& /*pixels*/) {
    return "macOS knows its notch by itself, so there is nothing to store.";
}

} // namespace orrivane
