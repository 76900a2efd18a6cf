#include "StripFixture.h"

namespace orrivane {
namespace {

struct Tick : StripFixture {};

std::vector<StatusItemWindow> eaten(const std::vector<double>& widths) {
    std::vector<StatusItemWindow> result;
    double x = 650;
    for (const double width : widths) {
        result.push_back(
            {static_cast<std::uint32_t>(result.size() + 1), {{x, 0}, {width, 24}}, true, true});
        x += width;
    }
    return result;
}

// Room is what lies between the menus and the notch, less both margins.
std::vector<double> fitted(const std::vector<double>& widths, double room) {
    const NotchInfo notch{1512, 100, 37, 700, 850};
    std::vector<double> result;
    for (const auto& item : StripController::fit(eaten(widths), notch, 700 - 6 - 100 - 10 - room))
        result.push_back(item.frame.width());
    return result;
}

using Widths = std::vector<double>;

TEST_F(Tick, roomExactlyEqualToTheTotalFits) {
    EXPECT_EQ(fitted({30, 40, 30}, 100), (Widths{30, 40, 30}));
    EXPECT_EQ(fitted({30, 40, 30}, 99.5), (Widths{40, 30}));
}

TEST_F(Tick, theWalkStopsAtTheFirstItemThatDoesNotFit) {
    EXPECT_EQ(fitted({30, 200, 40}, 100), Widths{40});
}

TEST_F(Tick, negativeRoomTakesNothing) {
    EXPECT_EQ(fitted({30}, -1), Widths{});
}

TEST_F(Tick, showsTheHiddenItemsLeftToRight) {
    start();
    EXPECT_EQ(row(), (Row{left, right}));
    EXPECT_EQ(names(), (std::vector<std::string>{"Left", "Right"}));
    EXPECT_EQ(controller->mirroredCount(), 2);
    EXPECT_EQ(world.trayPanel.frame, (Rect{{584, 945}, {70, 37}}));
}

TEST_F(Tick, withTheSwitchOffStandsDown) {
    start();
    world.userDefaults.stored["OrrivaneStripEnabled"] = false; // as another program would
    advance(1);
    EXPECT_FALSE(shown());
    EXPECT_EQ(controller->mirroredCount(), 0);
    EXPECT_EQ(interval(), 2.0);
}

TEST_F(Tick, withoutScreensStandsDown) {
    start();
    world.screens.list.clear();
    advance(1);
    EXPECT_FALSE(shown());
}

TEST_F(Tick, withASleepingDisplayStandsDownAndKeepsItsCaches) {
    start();
    world.screens.displayIsAsleep = true;
    advance(1);
    EXPECT_FALSE(shown());
    world.screens.displayIsAsleep = false;
    const auto before = captureCount();
    advance(2); // the second tick since the start that reaches the images
    EXPECT_TRUE(shown());
    EXPECT_EQ(captureCount(), before);
}

TEST_F(Tick, withASecondScreenObeysTheExternalRule) {
    world.screens.list.push_back(ScriptedScreens::plain({{1512, 0}, {1920, 1080}}));
    start();
    EXPECT_TRUE(shown()) << "with nothing stored the fallback is to mirror";
    setDefault(StripController::externalKey, false);
    advance(1);
    EXPECT_FALSE(shown());
    world.screens.list.pop_back();
    advance(2);
    EXPECT_TRUE(shown()) << "the rule is for more than one screen";
}

TEST_F(Tick, withoutThePermissionToCaptureStandsDown) {
    world.screenCapture.accessGranted = false;
    start();
    EXPECT_FALSE(shown());
    world.screenCapture.accessGranted = true;
    advance(2);
    EXPECT_TRUE(shown());
}

TEST_F(Tick, withoutAccessibilityStandsDown) {
    world.accessibility.trusted = false;
    start();
    EXPECT_FALSE(shown());
    EXPECT_EQ(world.journal.count("allWindows"), 0U) << "no census before the permissions";
    world.accessibility.trusted = true;
    advance(2);
    EXPECT_TRUE(shown());
}

TEST_F(Tick, neverMirrorsTheProgramsOwnWindows) {
    world.ownWindows.numbers = {left};
    start();
    EXPECT_EQ(row(), Row{right});
}

TEST_F(Tick, ownNumbersThatNoWindowCanHaveAreIgnored) {
    constexpr std::int64_t wraps = (std::int64_t{1} << 32U) + left;
    world.ownWindows.numbers = {-1, wraps, -(std::int64_t{1} << 32U) + left, right};
    start();
    EXPECT_EQ(row(), Row{left});
}

TEST_F(Tick, onlyOwnItemsHiddenCountsAsNothingHidden) {
    world.ownWindows.numbers = {left, right};
    start();
    EXPECT_FALSE(shown());
}

TEST_F(Tick, withNothingHiddenClearsEveryCache) {
    start();
    const auto all = world.windowList.all;
    const auto walks = ownerWalks();
    world.windowList.clear();
    advance(1);
    EXPECT_FALSE(shown());
    EXPECT_EQ(controller->mirroredCount(), 0);
    world.windowList.all = all;
    const auto captured = captureCount();
    const auto menus = menuReads();
    advance(2);
    EXPECT_TRUE(shown());
    EXPECT_EQ(ownerWalks(), walks + 1);
    EXPECT_EQ(captureCount(), captured + 2);
    EXPECT_EQ(menuReads(), menus + 1) << "3 s old, but forgotten";
}

TEST_F(Tick, withoutANotchStandsDownAndClears) {
    start();
    world.screens.list = {ScriptedScreens::plain({{0, 0}, {1512, 982}})};
    advance(1);
    EXPECT_FALSE(shown());
    world.screens.list = {ScriptedScreens::notched()};
    const auto captured = captureCount();
    advance(2);
    EXPECT_EQ(captureCount(), captured + 2);
}

TEST_F(Tick, aMenuWidthAtMostFiveSecondsOldIsReused) {
    start();
    EXPECT_EQ(menuReads(), 1U);
    advance(5);
    EXPECT_EQ(menuReads(), 1U) << "exactly five seconds old is young enough";
    advance(1);
    EXPECT_EQ(menuReads(), 2U);
}

TEST_F(Tick, aClockSetBackKeepsTheMenuWidth) {
    start();
    world.loop.setNow(world.loop.now() - 86400);
    advance(3);
    EXPECT_EQ(menuReads(), 1U);
    EXPECT_TRUE(shown());
    world.loop.setNow(world.loop.now() + 2 * 86400);
    advance(1);
    EXPECT_EQ(menuReads(), 2U);
}

TEST_F(Tick, anUnknownMenuWidthStandsDownAndKeepsTheOtherCaches) {
    start();
    world.accessibility.menuBarOwner.reset();
    post(SystemNotification::didActivateApplication);
    EXPECT_FALSE(shown());
    world.accessibility.menuBarOwner = world.accessibility.running[0];
    const auto walks = ownerWalks();
    const auto captured = captureCount();
    advance(2);
    EXPECT_TRUE(shown()) << "an absent width is read again by every tick";
    EXPECT_EQ(ownerWalks(), walks);
    EXPECT_EQ(captureCount(), captured);
}

TEST_F(Tick, whenNothingFitsTheStripHidesAndTheCachesStay) {
    start();
    setMenuWidth(620);
    post(SystemNotification::didActivateApplication);
    EXPECT_FALSE(shown());
    EXPECT_EQ(controller->mirroredCount(), 0);
    setMenuWidth(200);
    const auto walks = ownerWalks();
    const auto captured = captureCount();
    post(SystemNotification::didActivateApplication);
    EXPECT_TRUE(shown());
    EXPECT_EQ(ownerWalks(), walks);
    EXPECT_EQ(captureCount(), captured) << "the count of ticks went on from where it was";
}

TEST_F(Tick, aLongerMenuLeavesRoomForFewer) {
    setMenuWidth(654 - 10 - 40);
    start();
    EXPECT_EQ(row(), Row{right});
    EXPECT_EQ(controller->mirroredCount(), 1);
    EXPECT_EQ(captureCount(), 1U) << "only what is shown is captured";
}

TEST_F(Tick, anItemWithoutOwnerIsUnknownAndItsClickDoesNothing) {
    world.accessibility.quit(1);
    start();
    EXPECT_EQ(names(), (std::vector<std::string>{"Unknown", "Right"}));
    world.trayPanel.click(0);
    EXPECT_EQ(presses(), 0U);
}

TEST_F(Tick, anOwnerWithAnEmptyNameIsAMenuItem) {
    world.accessibility.running[1].localizedName = "";
    start();
    EXPECT_EQ(names(), (std::vector<std::string>{"Menu item", "Right"}));
}

TEST_F(Tick, anUnknownMenuWidthEndsTheTickBeforeTheImages) {
    world.accessibility.menuBarOwner.reset();
    start();
    advance(10);
    EXPECT_FALSE(shown());
    EXPECT_EQ(ownerWalks(), 0U);
    EXPECT_EQ(captureCount(), 0U);
}

TEST_F(Tick, ticksOnWhichNothingFitsDoNotCount) {
    start();
    setMenuWidth(620);
    post(SystemNotification::didActivateApplication);
    for (int tick = 0; tick < 3; ++tick)
        advance(2);
    setMenuWidth(200);
    const auto captured = captureCount();
    for (int tick = 2; tick <= 3; ++tick)
        post(SystemNotification::didActivateApplication);
    EXPECT_TRUE(shown());
    EXPECT_EQ(captureCount(), captured);
    post(SystemNotification::didActivateApplication);
    EXPECT_EQ(captureCount(), captured + 2) << "the fourth that reached the images";
}

TEST_F(Tick, aSmallerSetIsResolvedAgainAlthoughEveryOwnerIsKnown) {
    start();
    setMenuWidth(654 - 10 - 40);
    post(SystemNotification::didActivateApplication);
    EXPECT_EQ(row(), Row{right});
    EXPECT_EQ(ownerWalks(), 2U);
}

TEST_F(Tick, anotherOrderOfTheSameItemsIsNoOtherSet) {
    start();
    for (auto& entry : world.windowList.all)
        entry.bounds->origin.x = entry.number == left ? 780 : 740;
    advance(1);
    EXPECT_EQ(row(), (Row{right, left}));
    EXPECT_EQ(ownerWalks(), 1U);
}

TEST_F(Tick, standingDownTwiceHidesOnce) {
    start();
    world.windowList.clear();
    advance(10);
    EXPECT_EQ(world.journal.count("panel.orderOut"), 1U);
}

TEST_F(Tick, theStripWindowIsCreatedOnceAtTheFirstShow) {
    controller->start();
    EXPECT_EQ(world.trayPanel.creations, 0);
    world.loop.runUntilIdle();
    advance(10);
    EXPECT_EQ(world.trayPanel.creations, 1);
}

} // namespace
} // namespace orrivane
