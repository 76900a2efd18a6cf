#include "AppDelegateFixture.h"

#include <Orrivane/MenuBarIcon.h>

#include <algorithm>

namespace orrivane {
namespace {

using AppDelegateLaunchTest = AppDelegateFixture;

TEST_F(AppDelegateLaunchTest, nothingHappensBeforeTheLaunch) {
    EXPECT_TRUE(desktop.journal.calls().empty());
    EXPECT_EQ(itemCount(), 0U);
    EXPECT_EQ(livingViews, 0);
    delegate->togglePopover();
    delegate->refreshUpdateBadge();
    delegate->fitWindow(500);
    EXPECT_TRUE(desktop.journal.calls().empty());
}

TEST_F(AppDelegateLaunchTest, launchingAgainBeforeTheWindowIsMadeOnlyActivates) {
    EXPECT_TRUE(delegate->applicationShouldHandleReopen(false));
    EXPECT_EQ(desktop.journal.calls(), Calls{"activate"});
}

TEST_F(AppDelegateLaunchTest, theLaunchTakesItsStepsInTheirOrder) {
    launch();
    EXPECT_EQ(desktop.journal.calls(), (Calls{"setActivationPolicy 1",
                                              "registerDefault OrrivaneShowStatusItem",
                                              "popover's main view",
                                              "popover.setRoot",
                                              "popover.setContentSize",
                                              "createItem",
                                              "window.create",
                                              "window's main view",
                                              "window.setRoot",
                                              "mainScreen",
                                              "visibleFrame",
                                              "window.setFrameTopLeft",
                                              "preflightAccess",
                                              "isTrusted",
                                              "observe 0",
                                              "observe 5",
                                              "observe 1",
                                              "observe 2",
                                              "observe 3",
                                              "observe 4",
                                              "createUpdater"}));
}

TEST_F(AppDelegateLaunchTest, theProgramBecomesAnAccessory) {
    launch();
    EXPECT_EQ(desktop.workspace.activationPolicy, ActivationPolicy::accessory);
}

TEST_F(AppDelegateLaunchTest, theOneDefaultRegisteredIsThatTheStatusItemShows) {
    desktop.userDefaults.fallbacks.clear();
    launch();
    EXPECT_EQ(desktop.userDefaults.fallbacks,
              (ScriptedUserDefaults::Values{{"OrrivaneShowStatusItem", true}}));
    EXPECT_TRUE(desktop.userDefaults.stored.empty());
}

TEST_F(AppDelegateLaunchTest, thePopoverHasItsOwnMainViewAndItsSizeTakesEffect) {
    launch();
    ASSERT_TRUE(shell.popover.root);
    EXPECT_EQ(shell.popover.root->tooltip, "in popover");
    EXPECT_EQ(shell.popover.contentSize, (Size{980, 640}));
    EXPECT_FALSE(shell.popover.shown);
}

TEST_F(AppDelegateLaunchTest, theWindowHasItsOwnMainViewAndItsMeasures) {
    launch();
    ASSERT_TRUE(shell.mainWindow.configuration);
    EXPECT_EQ(shell.mainWindow.configuration->title, "Orrivane");
    EXPECT_EQ(shell.mainWindow.configuration->contentSize, (Size{980, 620}));
    EXPECT_EQ(shell.mainWindow.configuration->minimumContentSize, (Size{560, 400}));
    ASSERT_TRUE(shell.mainWindow.root);
    EXPECT_EQ(shell.mainWindow.root->tooltip, "in window");
    EXPECT_EQ(livingViews, 2);
}

TEST_F(AppDelegateLaunchTest, theMainViewsLiveAsLongAsTheDelegate) {
    launch();
    EXPECT_EQ(livingViews, 2);
    delegate.reset();
    EXPECT_EQ(livingViews, 0);
}

// Placement.

TEST_F(AppDelegateLaunchTest, theWindowStandsInTheMiddleEightPointsBelowTheTop) {
    launch();
    EXPECT_EQ(shell.mainWindow.currentFrame.minX(), 1512.0 / 2 - 490);
    EXPECT_EQ(shell.mainWindow.currentFrame.maxY(), 945 - 8);
}

TEST_F(AppDelegateLaunchTest, theMainScreenCountsAndNotTheFirst) {
    desktop.screens.list.push_back(ScriptedScreens::plain({{1512, -100}, {1920, 1080}}));
    desktop.screens.mainIndex = 1;
    launch();
    EXPECT_EQ(shell.mainWindow.currentFrame.minX(), 1512 + 1920.0 / 2 - 490);
    EXPECT_EQ(shell.mainWindow.currentFrame.maxY(), -100 + 1080 - 24 - 8);
}

TEST_F(AppDelegateLaunchTest, withoutAMainScreenTheWindowIsCentred) {
    desktop.screens.list.clear();
    launch();
    EXPECT_EQ(desktop.journal.count("window.center"), 1U);
    EXPECT_EQ(desktop.journal.count("window.setFrameTopLeft"), 0U);
    EXPECT_EQ(desktop.journal.count("visibleFrame"), 0U);
}

// Permissions.

TEST_F(AppDelegateLaunchTest, withBothPermissionsNothingIsShown) {
    launch();
    EXPECT_FALSE(shell.mainWindow.visible);
    EXPECT_EQ(desktop.workspace.activations, 0);
}

TEST_F(AppDelegateLaunchTest, withoutScreenRecordingTheWindowComesForwardAndTheRestIsNotAsked) {
    desktop.screenCapture.accessGranted = false;
    launch();
    EXPECT_TRUE(shell.mainWindow.visible);
    EXPECT_EQ(desktop.workspace.activations, 1);
    EXPECT_EQ(desktop.journal.count("isTrusted"), 0U);
    EXPECT_LT(desktop.journal.firstIndex("window.makeKeyAndOrderFront"),
              desktop.journal.firstIndex("activate"));
    EXPECT_LT(desktop.journal.firstIndex("activate"), desktop.journal.firstIndex("createUpdater"));
}

TEST_F(AppDelegateLaunchTest, withoutAccessibilityTheWindowComesForward) {
    desktop.accessibility.trusted = false;
    launch();
    EXPECT_TRUE(shell.mainWindow.visible);
    EXPECT_EQ(desktop.workspace.activations, 1);
    EXPECT_EQ(desktop.screenCapture.requestCalls, 0) << "nothing prompts";
}

// The services and the observers.

TEST_F(AppDelegateLaunchTest, theTrayLoopStartsOnlyWithItsSwitch) {
    desktop.userDefaults.setBool(StripController::enabledKey, false);
    launch();
    EXPECT_EQ(desktop.loop.repeatingTimerCount(), 0U);
    EXPECT_EQ(shell.updater.creations, 1);
}

TEST_F(AppDelegateLaunchTest, theTrayLoopRunsAfterTheLaunch) {
    launch();
    EXPECT_EQ(desktop.loop.repeatingTimerCount(), 1U);
    desktop.loop.runUntilIdle();
    EXPECT_EQ(desktop.journal.count("allWindows"), 1U);
}

TEST_F(AppDelegateLaunchTest, onlyTheStatusItemIsObservedBeforeTheWindowIsMade) {
    bool removed = false;
    whenViewIsMade = [&](bool inWindow) {
        if (!inWindow)
            return;
        showStatusItem(false);
        removed = item().removed;
        post(NotificationName::orrivaneShowWindow);
        post(NotificationName::orrivaneContentHeight, {{"height", 300}});
    };
    launch();
    EXPECT_TRUE(removed);
    EXPECT_EQ(desktop.workspace.activations, 0);
    EXPECT_TRUE(shell.mainWindow.animatedFrames.empty());
}

TEST_F(AppDelegateLaunchTest, theStatusItemIsNotObservedWhileThePopoverIsMade) {
    whenViewIsMade = [&](bool inWindow) {
        if (!inWindow)
            post(NotificationName::orrivaneStatusItemChanged);
    };
    launch();
    EXPECT_EQ(itemCount(), 1U);
    EXPECT_LT(desktop.journal.firstIndex("popover.setContentSize"),
              desktop.journal.firstIndex("createItem"));
}

TEST_F(AppDelegateLaunchTest, theServicesHaveStartedBeforeTheWindowIsObserved) {
    struct PostingUpdater : ScriptedUpdater {
        using ScriptedUpdater::ScriptedUpdater;
        std::function<void()> whenCreated;
        void create(UpdaterDelegate& updaterDelegate) override {
            ScriptedUpdater::create(updaterDelegate);
            whenCreated();
        }
    } updater;
    UpdateController posting{updater, desktop.workspace, desktop.loop, notifications};
    updater.whenCreated = [this] {
        post(NotificationName::orrivaneShowWindow);
        post(NotificationName::orrivaneContentHeight, {{"height", 300}});
    };
    AppDelegate launched(desktop.platform(), shell.platform(),
                         {captures, strip, posting, notifications},
                         [](bool, const auto&) { return std::shared_ptr<void>(); });
    launched.applicationDidFinishLaunching();
    EXPECT_EQ(updater.creations, 1);
    EXPECT_EQ(desktop.loop.repeatingTimerCount(), 1U) << "the tray loop";
    EXPECT_EQ(desktop.workspace.activations, 0);
    EXPECT_TRUE(shell.mainWindow.animatedFrames.empty());
    post(NotificationName::orrivaneShowWindow);
    EXPECT_EQ(desktop.workspace.activations, 1);
}

// The own status item.

TEST_F(AppDelegateLaunchTest, aFirstLaunchShowsTheStatusItemWithItsIcon) {
    launch();
    ASSERT_EQ(itemCount(), 1U);
    EXPECT_EQ(item().length, -1);
    EXPECT_EQ(item().image, MenuBarIcon::image());
    EXPECT_TRUE(item().action);
    EXPECT_EQ(item().imagePosition, 7);
    EXPECT_EQ(item().title, "");
    EXPECT_EQ(item().toolTip, std::nullopt);
}

TEST_F(AppDelegateLaunchTest, aStoredSwitchKeepsTheStatusItemAway) {
    desktop.userDefaults.setBool(AppDelegate::showStatusItemKey, false);
    launch();
    EXPECT_EQ(itemCount(), 0U);
}

TEST_F(AppDelegateLaunchTest, anItemWithoutAButtonIsKeptWithoutImageActionOrBadge) {
    shell.statusBar.givesButtons = false;
    launch();
    announceUpdate("1.4");
    ASSERT_EQ(itemCount(), 1U);
    EXPECT_FALSE(item().removed);
    EXPECT_EQ(item().image, std::nullopt);
    EXPECT_FALSE(item().action);
    EXPECT_EQ(item().imagePosition, std::nullopt);
    EXPECT_EQ(item().toolTip, std::nullopt);
    delegate->togglePopover();
    EXPECT_FALSE(shell.popover.shown);
    post(NotificationName::orrivaneStatusItemChanged);
    EXPECT_EQ(itemCount(), 1U) << "it is there";
}

} // namespace
} // namespace orrivane
