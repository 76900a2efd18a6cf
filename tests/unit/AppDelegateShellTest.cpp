#include "AppDelegateFixture.h"

#include <limits>

namespace orrivane {
namespace {

struct AppDelegateShellTest : AppDelegateFixture {
    AppDelegateShellTest() {
        launch();
        desktop.journal.clear();
    }
};

// Hiding and showing the status item.

TEST_F(AppDelegateShellTest, theSwitchTakesTheItemAwayAndBringsANewOne) {
    showStatusItem(false);
    EXPECT_TRUE(item().removed);
    EXPECT_EQ(itemCount(), 1U);
    showStatusItem(true);
    EXPECT_EQ(itemCount(), 2U);
    EXPECT_FALSE(item().removed);
    EXPECT_TRUE(item().image);
}

TEST_F(AppDelegateShellTest, theSwitchIsReadWhenTheChangeIsPosted) {
    desktop.userDefaults.setBool(AppDelegate::showStatusItemKey, false);
    EXPECT_FALSE(item().removed);
    post(NotificationName::orrivaneStatusItemChanged);
    EXPECT_TRUE(item().removed);
    post(NotificationName::orrivaneStatusItemChanged);
    EXPECT_EQ(desktop.journal.count("removeItem"), 1U);
}

TEST_F(AppDelegateShellTest, postingTwiceWithTheSwitchOnCreatesOneItemOnly) {
    post(NotificationName::orrivaneStatusItemChanged);
    post(NotificationName::orrivaneStatusItemChanged);
    EXPECT_EQ(itemCount(), 1U);
    EXPECT_EQ(desktop.journal.count("removeItem"), 0U);
}

// The badge.

TEST_F(AppDelegateShellTest, aKnownUpdatePutsTheBadgeAndTheTipOnTheItem) {
    announceUpdate("1.4");
    EXPECT_EQ(item().title, " \xE2\x97\x8F");
    EXPECT_EQ(item().toolTip, "Orrivane 1.4 is available");
    EXPECT_EQ(item().imagePosition, 7);
}

TEST_F(AppDelegateShellTest, theBadgeGoesWithTheUpdate) {
    announceUpdate("1.4");
    updates.willFinishUpdateSession();
    EXPECT_EQ(item().title, "");
    EXPECT_EQ(item().toolTip, std::nullopt);
    EXPECT_EQ(item().imagePosition, 7);
}

TEST_F(AppDelegateShellTest, anItemMadeAgainCarriesTheBadgeAtOnce) {
    showStatusItem(false);
    announceUpdate("1.4");
    showStatusItem(true);
    EXPECT_EQ(item().title, " ●");
    EXPECT_EQ(item().toolTip, "Orrivane 1.4 is available");
}

TEST_F(AppDelegateShellTest, aVersionIsPutIntoTheTipAsItIs) {
    announceUpdate("2.0 %s %@");
    EXPECT_EQ(item().toolTip, "Orrivane 2.0 %s %@ is available");
}

// The popover.

TEST_F(AppDelegateShellTest, aClickOpensThePopoverBelowTheItemAndTheNextClosesIt) {
    shell.statusBar.click();
    EXPECT_TRUE(shell.popover.shown);
    EXPECT_NE(shell.popover.anchor, nullptr);
    shell.statusBar.click();
    EXPECT_FALSE(shell.popover.shown);
    EXPECT_EQ(desktop.journal.calls(), (Calls{"popover.show", "popover.performClose"}));
    EXPECT_EQ(desktop.workspace.activations, 0) << "the program does not become active";
}

TEST_F(AppDelegateShellTest, aPopoverClosedByAClickElsewhereOpensAgain) {
    delegate->togglePopover();
    shell.popover.clickOutside();
    delegate->togglePopover();
    EXPECT_TRUE(shell.popover.shown);
    EXPECT_EQ(desktop.journal.count("popover.show"), 2U);
}

TEST_F(AppDelegateShellTest, withoutAStatusItemThePopoverIsNotToggled) {
    showStatusItem(false);
    desktop.journal.clear();
    delegate->togglePopover();
    EXPECT_TRUE(desktop.journal.calls().empty());
}

TEST_F(AppDelegateShellTest, thePopoverOpensBelowTheItemThatIsThereNow) {
    delegate->togglePopover();
    const auto* first = shell.popover.anchor;
    delegate->togglePopover();
    EXPECT_NE(first, nullptr);
    showStatusItem(false);
    showStatusItem(true);
    shell.popover.anchor = nullptr;
    shell.statusBar.click(1);
    EXPECT_TRUE(shell.popover.shown);
    EXPECT_NE(shell.popover.anchor, nullptr);
}

// The window.

TEST_F(AppDelegateShellTest, askingForTheWindowClosesThePopoverAndBringsItForward) {
    delegate->togglePopover();
    desktop.journal.clear();
    post(NotificationName::orrivaneShowWindow);
    EXPECT_EQ(desktop.journal.calls(),
              (Calls{"popover.performClose", "window.makeKeyAndOrderFront", "activate"}));
    EXPECT_FALSE(shell.popover.shown);
    EXPECT_TRUE(shell.mainWindow.visible);
}

TEST_F(AppDelegateShellTest, askingForTheWindowClosesThePopoverWithoutAskingWhetherItShows) {
    post(NotificationName::orrivaneShowWindow);
    EXPECT_EQ(desktop.journal.calls(),
              (Calls{"popover.performClose", "window.makeKeyAndOrderFront", "activate"}));
}

TEST_F(AppDelegateShellTest, launchingAgainBringsTheWindowForwardWhateverIsVisible) {
    for (const bool hasVisibleWindows : {false, true}) {
        desktop.journal.clear();
        EXPECT_TRUE(delegate->applicationShouldHandleReopen(hasVisibleWindows));
        EXPECT_EQ(desktop.journal.calls(), (Calls{"window.makeKeyAndOrderFront", "activate"}));
    }
}

TEST_F(AppDelegateShellTest, launchingAgainLeavesThePopoverAlone) {
    delegate->togglePopover();
    delegate->applicationShouldHandleReopen(false);
    EXPECT_EQ(desktop.journal.count("popover.performClose"), 0U);
}

TEST_F(AppDelegateShellTest, aClosedWindowComesBackWithItsSizeAndItsContent) {
    post(NotificationName::orrivaneShowWindow);
    delegate->fitWindow(500);
    const Rect frame = shell.mainWindow.currentFrame;
    shell.mainWindow.close();
    delegate->applicationShouldHandleReopen(false);
    EXPECT_TRUE(shell.mainWindow.visible);
    EXPECT_EQ(shell.mainWindow.currentFrame, frame);
    EXPECT_EQ(desktop.journal.count("window.create"), 0U);
    EXPECT_EQ(livingViews, 2);
}

// Fitting.

TEST_F(AppDelegateShellTest, theWindowFollowsTheHeightOfItsContentUnderItsTopEdge) {
    const Rect before = shell.mainWindow.currentFrame;
    post(NotificationName::orrivaneContentHeight, {{"height", 500}});
    ASSERT_EQ(shell.mainWindow.animatedFrames.size(), 1U);
    const Rect after = shell.mainWindow.currentFrame;
    EXPECT_EQ(contentHeight(), 500);
    EXPECT_EQ(after.maxY(), before.maxY());
    EXPECT_EQ(after.minX(), before.minX());
    EXPECT_EQ(after.width(), before.width());
    EXPECT_EQ(after.height(), 500 + shell.mainWindow.chromeHeight);
}

TEST_F(AppDelegateShellTest, theWindowStops24PointsShortOfTheVisibleFrame) {
    shell.mainWindow.screenVisibleFrame = Rect{{0, 0}, {1512, 900}};
    delegate->fitWindow(2000);
    EXPECT_EQ(contentHeight(), 876);
}

TEST_F(AppDelegateShellTest, withoutAnyScreenTheContentStopsAt776Points) {
    shell.mainWindow.screenVisibleFrame = std::nullopt;
    delegate->fitWindow(2000);
    EXPECT_EQ(contentHeight(), 776);
}

TEST_F(AppDelegateShellTest, fourPointsChangeNothingAndFourAndAHalfDo) {
    delegate->fitWindow(624);
    delegate->fitWindow(616);
    EXPECT_TRUE(shell.mainWindow.animatedFrames.empty());
    delegate->fitWindow(624.5);
    EXPECT_EQ(contentHeight(), 624.5);
}

TEST_F(AppDelegateShellTest, aWindowTheUserResizedKeepsItsWidth) {
    shell.mainWindow.currentFrame = {{40, 60}, {700, 528}};
    delegate->fitWindow(450);
    EXPECT_EQ(shell.mainWindow.currentFrame, (Rect{{40, 60 + 528 - 478}, {700, 478}}));
}

TEST_F(AppDelegateShellTest, aHeightNotificationWithoutAHeightIsIgnored) {
    post(NotificationName::orrivaneContentHeight);
    post(NotificationName::orrivaneContentHeight, {{"width", 300}});
    post(NotificationName::orrivaneContentHeight,
         {{"height", std::numeric_limits<double>::quiet_NaN()}});
    EXPECT_TRUE(shell.mainWindow.animatedFrames.empty());
}

// After the delegate.

TEST_F(AppDelegateShellTest, observersWithoutADelegateDoNothingButActivate) {
    announceUpdate("1.4");
    delegate.reset();
    desktop.journal.clear();
    post(NotificationName::orrivaneStatusItemChanged);
    post(NotificationName::orrivaneContentHeight, {{"height", 300}});
    updates.willFinishUpdateSession();
    EXPECT_TRUE(desktop.journal.calls().empty());
    post(NotificationName::orrivaneShowWindow);
    EXPECT_EQ(desktop.journal.calls(), Calls{"activate"});
}

TEST_F(AppDelegateShellTest, theItemsActionReachesNoDelegateThatIsGone) {
    const auto action = item().action;
    delegate.reset();
    EXPECT_TRUE(item().removed) << "with the delegate";
    desktop.journal.clear();
    action();
    EXPECT_TRUE(desktop.journal.calls().empty());
}

} // namespace
} // namespace orrivane
