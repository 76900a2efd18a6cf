#include <tests/unit/MainViewFixture.h>

namespace orrivane {
namespace {

using namespace reading;

constexpr auto traySwitch = "Show hidden icons beside the notch";

struct MainViewCycleTest : MainViewFixture {
    /// Times in seconds at which a census was taken while `seconds` passed, in steps of a tenth.
    std::vector<double> censusTimes(double seconds) {
        std::vector<double> times;
        for (int step = 0; step < static_cast<int>(seconds * 10); ++step) {
            const auto before = censuses();
            world.loop.advance(0.1);
            if (censuses() > before)
                times.push_back(static_cast<double>(step + 1) / 10);
        }
        return times;
    }
};

TEST_F(MainViewCycleTest, theFirstValueIsThereBeforeTheViewIsMade) {
    create();
    EXPECT_EQ(renderings, 1);
    EXPECT_EQ(censuses(), 0U);
}

TEST_F(MainViewCycleTest, makingAViewAsksForPermissionsStoredSpacingAndLoginItemOnlyOnce) {
    create();
    world.loop.advance(60);
    EXPECT_EQ(count("copyValue"), 2U);
    EXPECT_EQ(count("status"), 1U);
    EXPECT_EQ(censuses(), 0U);
    EXPECT_EQ(world.loop.timerCount(), 0U);
}

TEST_F(MainViewCycleTest, thePopoverRefreshesAtOnceAndEveryTwoSeconds) {
    createAndAppear();
    EXPECT_EQ(censuses(), 1U);
    EXPECT_EQ(censusTimes(6.5), (std::vector{2.0, 4.0, 6.0}));
}

TEST_F(MainViewCycleTest, twoSecondsPassBetweenTheEndOfARefreshAndTheNext) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    world.screenCapture.windows.clear();
    world.screenCapture.contentReply = CaptureReply::later(0.5, true);
    createAndAppear();
    EXPECT_EQ(censusTimes(6), (std::vector{2.5, 5.0}));
}

TEST_F(MainViewCycleTest, aPopoverThatWasClosedRefreshesNoMore) {
    createAndAppear();
    EXPECT_EQ(world.loop.timerCount(), 1U);
    disappear();
    EXPECT_EQ(world.loop.timerCount(), 0U);
    EXPECT_EQ(censusTimes(10), (std::vector<double>{}));
}

TEST_F(MainViewCycleTest, aPopoverClosedInTheSameTurnNeverRefreshes) {
    create();
    root.appeared.run();
    root.disappeared.run();
    world.loop.advance(10);
    EXPECT_EQ(censuses(), 0U);
}

TEST_F(MainViewCycleTest, aPopoverOpenedAgainHasOneCycle) {
    createAndAppear();
    disappear();
    appear();
    EXPECT_EQ(censuses(), 2U);
    EXPECT_EQ(censusTimes(4.5), (std::vector{2.0, 4.0}));
}

TEST_F(MainViewCycleTest, aPopoverReopenedDuringARefreshHasOneCycle) {
    world.screenCapture.captureReply = CaptureReply::later(1.0);
    createAndAppear();
    disappear();
    appear();
    EXPECT_EQ(censuses(), 2U);
    world.loop.advance(1.05); // both refreshes have ended
    EXPECT_EQ(censusTimes(4), (std::vector{2.0, 4.0}));
}

TEST_F(MainViewCycleTest, aRefreshUnderWayWhenThePopoverClosesIsCompleted) {
    world.screenCapture.captureReply = CaptureReply::later(1.0);
    createAndAppear();
    disappear();
    EXPECT_TRUE(view->state().isRefreshing());
    world.loop.advance(1.5);
    EXPECT_FALSE(view->state().isRefreshing());
    EXPECT_EQ(view->state().images().size(), 4U);
}

TEST_F(MainViewCycleTest, aSecondAppearanceInARowChangesNothing) {
    createAndAppear();
    appear();
    EXPECT_EQ(censuses(), 1U);
    EXPECT_EQ(censusTimes(2.5), (std::vector{2.0}));
}

TEST_F(MainViewCycleTest, theWindowTakesNoCensusWhileItIsHidden) {
    createAndAppear(true);
    world.loop.advance(10.5);
    EXPECT_EQ(censuses(), 0U);
    EXPECT_GE(count("mainViewWindowIsVisible"), 5U);
    world.ownWindows.mainViewWindowVisible = true;
    EXPECT_EQ(censusTimes(4), (std::vector{1.5, 3.5}));
    world.ownWindows.mainViewWindowVisible = false;
    EXPECT_EQ(censusTimes(6), (std::vector<double>{}));
}

TEST_F(MainViewCycleTest, aHiddenWindowDoesNotAskForThePermissionEither) {
    world.accessibility.trusted = false;
    createAndAppear(true);
    world.loop.advance(4);
    EXPECT_FALSE(isShown<Text>("Accessibility permission is required to click mirrored icons."));
}

TEST_F(MainViewCycleTest, theAccessibilityPermissionIsAskedBeforeTheRefresh) {
    world.accessibility.trusted = false;
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    createAndAppear();
    EXPECT_TRUE(view->state().isRefreshing());
    EXPECT_TRUE(isShown<Text>("Accessibility permission is required to click mirrored icons."));
    EXPECT_LT(world.journal.firstIndex("isTrusted"), world.journal.firstIndex("allWindows"));
}

TEST_F(MainViewCycleTest, thePopoverDoesNotCareWhetherTheWindowIsVisible) {
    createAndAppear(false);
    EXPECT_EQ(count("mainViewWindowIsVisible"), 0U);
    EXPECT_EQ(censuses(), 1U);
}

TEST_F(MainViewCycleTest, theTraySwitchIsReadOnAppearanceOnly) {
    create();
    EXPECT_FALSE(isOn(traySwitch));
    appear();
    EXPECT_TRUE(isOn(traySwitch));
    world.userDefaults.changeElsewhere("OrrivaneStripEnabled", false);
    world.loop.advance(5);
    EXPECT_TRUE(isOn(traySwitch));
    disappear();
    appear();
    EXPECT_FALSE(isOn(traySwitch));
}

TEST_F(MainViewCycleTest, aChangeOfAStoredSwitchIsShownAtOnce) {
    createAndAppear();
    world.userDefaults.changeElsewhere("OrrivaneShowStatusItem", false);
    settle();
    EXPECT_FALSE(isOn("Menu bar icon"));
}

TEST_F(MainViewCycleTest, redrawsOncePerTurnHoweverManyFieldsChange) {
    create();
    view->state().setSliderValue(5);
    view->state().setSliderValue(6);
    view->state().setLaunchAtLogin(true);
    updates.willHandleShowingUpdate(false, "1.4");
    EXPECT_EQ(renderings, 1);
    settle();
    EXPECT_EQ(renderings, 2);
    EXPECT_TRUE(isShown<Text>("At spacing 6"));
}

TEST_F(MainViewCycleTest, redrawsNothingWhileNothingChanges) {
    createAndAppear(true);
    const auto before = renderings;
    world.loop.advance(60);
    EXPECT_EQ(renderings, before);
}

TEST_F(MainViewCycleTest, refreshesMayOverlapAndTheFirstToEndEnablesTheButton) {
    world.screenCapture.captureReply = CaptureReply::later(1.0);
    createAndAppear();
    world.loop.advance(0.5);
    press("Refresh"); // the cycle's refresh still runs
    EXPECT_EQ(censuses(), 2U);
    world.loop.advance(0.6);
    EXPECT_TRUE(only<Button>(root, "Refresh").isEnabled);
    EXPECT_EQ(world.screenCapture.inFlight, 4);
    world.loop.advance(0.5);
    EXPECT_EQ(world.screenCapture.inFlight, 0);
}

TEST_F(MainViewCycleTest, aRefreshButtonDoesNotMoveTheCycle) {
    createAndAppear();
    world.loop.advance(1);
    press("Refresh");
    EXPECT_EQ(censusTimes(3.5), (std::vector{1.0, 3.0}));
}

TEST_F(MainViewCycleTest, eachViewHasAStateOfItsOwn) {
    create(false);
    const auto popover = view;
    const auto popoverRoot = root;
    create(true);
    EXPECT_NE(&popover->state(), &view->state());
    EXPECT_NE(&popover->arrangeView(), &view->arrangeView());
    view->state().setSliderValue(5);
    EXPECT_EQ(popover->state().sliderValue(), 16);
}

TEST_F(MainViewCycleTest, aViewThatIsDroppedLeavesNoTimerAndIsNotDrawnAgain) {
    createAndAppear();
    view->state().setSliderValue(5);
    const auto before = renderings;
    view.reset();
    world.loop.advance(10);
    EXPECT_EQ(renderings, before);
    EXPECT_EQ(censuses(), 1U);
    EXPECT_EQ(world.loop.timerCount(), 0U);
    EXPECT_EQ(world.userDefaults.observerCount(), 0U);
}

} // namespace
} // namespace orrivane
