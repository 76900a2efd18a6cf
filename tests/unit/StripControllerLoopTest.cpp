#include "StripFixture.h"

namespace orrivane {
namespace {

using enum SystemNotification;

struct Loop : StripFixture {
    [[nodiscard]] std::size_t observers() {
        std::size_t count = 0;
        for (const auto notification : {didActivateApplication, willSleep, screensDidSleep, didWake,
                                        screensDidWake, didChangeScreenParameters})
            count += world.workspace.observerCount(notification);
        return count;
    }
    void hideEverything() { world.windowList.clear(); }
    void startHidden() {
        hideEverything();
        start();
    }
};

TEST_F(Loop, registersBothDefaultsAsFallbacksOnly) {
    EXPECT_EQ(world.userDefaults.fallbacks,
              (ScriptedUserDefaults::Values{{"OrrivaneStripEnabled", true},
                                            {"OrrivaneMirrorOnExternal", true}}));
    EXPECT_TRUE(world.userDefaults.stored.empty());
    EXPECT_EQ(StripController::externalKey, "OrrivaneMirrorOnExternal");
    EXPECT_TRUE(controller->enabled());
}

TEST_F(Loop, theFirstTickRunsAtOnceWithTheTimerAtOneSecond) {
    controller->start();
    EXPECT_EQ(world.loop.timers().size(), 1U);
    EXPECT_EQ(interval(), 1.0);
    world.loop.runUntilIdle();
    EXPECT_TRUE(shown());
    EXPECT_EQ(world.loop.elapsed(), 0);
}

TEST_F(Loop, theTimerMayBeLateByThirtyPercent) {
    start();
    EXPECT_EQ(world.loop.timers().at(0).tolerance, 0.3);
    hideEverything();
    advance(1);
    EXPECT_EQ(world.loop.timers().at(0).tolerance, 0.6);
}

TEST_F(Loop, hidingRelaxesTheTimerAndShowingTightensIt) {
    startHidden();
    EXPECT_EQ(interval(), 2.0);
    addItem(13, 690, 20, 3, "New");
    advance(2);
    EXPECT_TRUE(shown());
    EXPECT_EQ(interval(), 1.0);
    hideEverything();
    advance(1);
    EXPECT_EQ(interval(), 2.0);
}

TEST_F(Loop, anUnchangedIntervalKeepsItsTimer) {
    start();
    advance(0.5);
    post(didActivateApplication); // a tick half-way to the next firing
    EXPECT_EQ(world.loop.timers().at(0).dueIn, 0.5);
}

TEST_F(Loop, withTheSwitchOffStartDoesNothing) {
    setDefault("OrrivaneStripEnabled", false);
    start();
    EXPECT_EQ(world.loop.timerCount(), 0U);
    EXPECT_EQ(observers(), 0U);
}

TEST_F(Loop, startingTwiceInstallsOneTimerAndOneObserverEach) {
    start();
    controller->start();
    controller->setEnabled(true);
    EXPECT_EQ(world.loop.repeatingTimerCount(), 1U);
    EXPECT_EQ(observers(), 6U);
}

TEST_F(Loop, startingWhileItRunsNeitherTicksNorRestartsTheTimer) {
    start();
    advance(0.5);
    const auto takes = world.journal.count("allWindows");
    start();
    EXPECT_EQ(world.journal.count("allWindows"), takes);
    EXPECT_EQ(world.loop.timers().at(0).dueIn, 0.5);
}

TEST_F(Loop, startingWhileSuspendedKeepsTheObserversThatAreThere) {
    start();
    post(willSleep);
    controller->setEnabled(true);
    EXPECT_EQ(observers(), 6U);
    EXPECT_EQ(world.loop.repeatingTimerCount(), 1U);
}

TEST_F(Loop, turningTheSwitchOffStopsAndHides) {
    start();
    controller->setEnabled(false);
    EXPECT_FALSE(controller->enabled());
    EXPECT_FALSE(shown());
    EXPECT_EQ(controller->mirroredCount(), 0);
    EXPECT_EQ(world.loop.timerCount(), 0U);
    EXPECT_EQ(observers(), 0U);
}

TEST_F(Loop, turningTheSwitchOnStartsAgainAndKeepsTheCaches) {
    start();
    const auto captured = captureCount();
    controller->setEnabled(false);
    controller->setEnabled(true);
    world.loop.runUntilIdle();
    EXPECT_TRUE(shown());
    EXPECT_EQ(world.userDefaults.stored.at("OrrivaneStripEnabled"), true);
    EXPECT_EQ(captureCount(), captured);
    EXPECT_EQ(observers(), 6U);
}

TEST_F(Loop, turningTheSwitchOffWhileNothingWasShownHidesNothing) {
    startHidden();
    controller->setEnabled(false);
    EXPECT_EQ(world.journal.count("panel.orderOut"), 0U);
}

TEST_F(Loop, triggersDuringATickAreDropped) {
    world.screenCapture.captureReply = CaptureReply::later(0.6);
    start();
    const auto takes = world.journal.count("allWindows");
    post(didActivateApplication);
    post(didChangeScreenParameters);
    EXPECT_EQ(world.journal.count("allWindows"), takes);
    advance(0.6);
    EXPECT_TRUE(shown());
    EXPECT_EQ(world.journal.count("allWindows"), takes) << "dropped, not queued";
    post(didActivateApplication);
    EXPECT_EQ(world.journal.count("allWindows"), takes + 1);
}

TEST_F(Loop, anotherApplicationsMenusAreMeasuredAtOnce) {
    start();
    const auto reads = menuReads();
    post(didActivateApplication);
    EXPECT_EQ(menuReads(), reads + 1);
}

TEST_F(Loop, changedScreensClearTheCachesAndTickAtOnce) {
    start();
    const auto walks = ownerWalks();
    const auto reads = menuReads();
    const auto contents = world.screenCapture.contentCalls;
    post(didChangeScreenParameters);
    EXPECT_TRUE(shown());
    EXPECT_EQ(ownerWalks(), walks + 1);
    EXPECT_EQ(menuReads(), reads + 1);
    EXPECT_EQ(world.screenCapture.contentCalls, contents + 1);
}

TEST_F(Loop, changedScreensDuringACaptureAreMetByTheNextTick) {
    world.screenCapture.captureReply = CaptureReply::later(0.6);
    start();
    const auto walks = ownerWalks();
    post(didChangeScreenParameters);
    advance(0.6);
    EXPECT_TRUE(shown()) << "the tick under way goes on with what it has";
    EXPECT_EQ(names(), (std::vector<std::string>{"Unknown", "Unknown"}));
    world.screenCapture.captureReply = CaptureReply::now();
    advance(0.5);
    EXPECT_EQ(ownerWalks(), walks + 1);
    EXPECT_EQ(names(), (std::vector<std::string>{"Left", "Right"}));
}

TEST_F(Loop, anotherApplicationDuringACaptureIsMeasuredByTheNextTick) {
    world.screenCapture.captureReply = CaptureReply::later(0.6);
    start();
    const auto reads = menuReads();
    post(didActivateApplication);
    EXPECT_EQ(menuReads(), reads);
    advance(1);
    EXPECT_EQ(menuReads(), reads + 1);
}

TEST_F(Loop, aStopDuringATickLeavesTheNextStartItsTrigger) {
    world.screenCapture.captureReply = CaptureReply::later(0.6);
    start();
    controller->setEnabled(false);
    advance(0.6);
    controller->setEnabled(true);
    world.loop.runUntilIdle();
    advance(0.6);
    EXPECT_TRUE(shown());
    EXPECT_EQ(world.journal.count("allWindows"), 2U);
}

TEST_F(Loop, aDestroyedControllerLeavesNothingBehind) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    start();
    controller.reset();
    advance(3);
    EXPECT_FALSE(shown());
    EXPECT_EQ(world.loop.timerCount(), 0U);
    EXPECT_EQ(observers(), 0U);
}

} // namespace
} // namespace orrivane
