#include "StripFixture.h"

namespace orrivane {
namespace {

using enum SystemNotification;

struct Sleeping : StripFixture,
                  testing::WithParamInterface<std::pair<SystemNotification, SystemNotification>> {
    SystemNotification asleep = GetParam().first;
    SystemNotification awake = GetParam().second;

    static Task<> captureOnce(CaptureService& service, std::vector<std::uint32_t> ids) {
        co_await service.captureIcons(std::move(ids));
    }
    void captureAsAnotherWould() {
        orrivane::start(world.loop, captureOnce(captures, {left}));
        world.loop.runUntilIdle();
    }
};

TEST_P(Sleeping, hidesAtOnceAndStopsTheTimer) {
    start();
    post(asleep);
    EXPECT_FALSE(shown());
    EXPECT_EQ(controller->mirroredCount(), 0);
    EXPECT_EQ(world.loop.timerCount(), 0U);
    const auto takes = world.journal.count("allWindows");
    advance(3600);
    EXPECT_EQ(world.journal.count("allWindows"), takes);
}

TEST_P(Sleeping, clearsEveryCache) {
    start();
    const auto walks = ownerWalks();
    const auto contents = world.screenCapture.contentCalls;
    const auto captured = captureCount();
    const auto reads = menuReads();
    post(asleep);
    post(awake);
    advance(3);
    EXPECT_TRUE(shown());
    EXPECT_EQ(ownerWalks(), walks + 1);
    EXPECT_EQ(world.screenCapture.contentCalls, contents + 1);
    EXPECT_EQ(captureCount(), captured + 2);
    EXPECT_EQ(menuReads(), reads + 1);
}

TEST_P(Sleeping, threeSecondsAfterAWakeOneTickRunsAndTheTimerIsBack) {
    start();
    post(asleep);
    post(awake);
    advance(2.999);
    EXPECT_FALSE(shown());
    EXPECT_EQ(interval(), 0);
    const auto takes = world.journal.count("allWindows");
    advance(0.001);
    EXPECT_TRUE(shown());
    EXPECT_EQ(interval(), 1.0);
    EXPECT_EQ(world.journal.count("allWindows"), takes + 1);
}

TEST_P(Sleeping, aWakeWithoutSleepDoesNothing) {
    start();
    const auto takes = world.journal.count("allWindows");
    post(awake);
    advance(0.9);
    EXPECT_EQ(world.journal.count("allWindows"), takes);
    EXPECT_EQ(world.loop.timerCount(), 1U);
}

TEST_P(Sleeping, bothWakeNotificationsResumeOnce) {
    start();
    post(asleep);
    post(didWake);
    advance(0.2);
    post(screensDidWake);
    advance(2.8);
    const auto takes = world.journal.count("allWindows");
    advance(0.2);
    EXPECT_EQ(world.journal.count("allWindows"), takes);
    EXPECT_EQ(world.loop.repeatingTimerCount(), 1U);
}

TEST_P(Sleeping, aSwitchTurnedOffMeanwhileStaysOff) {
    start();
    post(asleep);
    post(awake);
    world.userDefaults.stored["OrrivaneStripEnabled"] = false; // the notification comes later
    advance(3);
    EXPECT_FALSE(shown());
    EXPECT_EQ(world.loop.timerCount(), 0U);
}

TEST_P(Sleeping, turningTheSwitchOffEndsTheSuspension) {
    start();
    post(asleep);
    controller->setEnabled(false);
    controller->setEnabled(true);
    world.loop.runUntilIdle();
    EXPECT_TRUE(shown()) << "the flag was cleared with the loop";
}

TEST_P(Sleeping, theSwitchTurnedOnWhileSuspendedTicksWithoutShowing) {
    start();
    post(asleep);
    controller->setEnabled(true);
    EXPECT_EQ(interval(), 1.0);
    world.loop.runUntilIdle();
    EXPECT_FALSE(shown());
    EXPECT_EQ(interval(), 2.0) << "only the interval rule is applied";
    advance(10);
    EXPECT_FALSE(shown());
    post(awake);
    advance(3);
    EXPECT_TRUE(shown());
    EXPECT_EQ(interval(), 1.0);
}

TEST_P(Sleeping, aTimerThatIsThereWhenTheWaitEndsKeepsItsPhase) {
    world.windowList.clear();
    start();
    post(asleep);
    controller->setEnabled(true);
    world.loop.runUntilIdle(); // from here on every two seconds
    post(awake);
    advance(3);
    EXPECT_EQ(interval(), 2.0);
    EXPECT_EQ(world.loop.timers().at(0).dueIn, 1.0);
}

TEST_P(Sleeping, aSecondSleepWithinTheThreeSecondsIsEndedByTheFirstWake) {
    start();
    post(asleep);
    post(awake);
    advance(1);
    post(asleep);
    EXPECT_FALSE(shown());
    advance(2);
    EXPECT_TRUE(shown()) << "the wait that is under way finds the flag and resumes";
    EXPECT_EQ(world.loop.repeatingTimerCount(), 1U);
}

TEST_P(Sleeping, asleepDuringACaptureItStandsDownInstead) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    start();
    post(asleep);
    advance(1);
    EXPECT_FALSE(shown());
    EXPECT_EQ(controller->mirroredCount(), 0);
    EXPECT_EQ(world.loop.timerCount(), 0U) << "without a timer the interval rule does nothing";
}

TEST_P(Sleeping, dropsTheSnapshotThatOthersShare) {
    start();
    post(asleep);
    const auto contents = world.screenCapture.contentCalls;
    captureAsAnotherWould();
    EXPECT_EQ(world.screenCapture.contentCalls, contents + 1);
}

TEST_P(Sleeping, asleepAndSwitchedOffDuringACaptureItStandsDownInstead) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    start();
    post(asleep);
    controller->setEnabled(false);
    advance(1);
    EXPECT_EQ(world.trayPanel.creations, 0);
    EXPECT_EQ(world.loop.timerCount(), 0U);
    post(awake);
    advance(4);
    EXPECT_FALSE(shown()) << "nobody listens any more";
}

TEST_P(Sleeping, aSecondSleepThatIsNotOverWhenTheWaitEndsIsForgotten) {
    start();
    post(asleep);
    post(awake);
    advance(2.9);
    post(asleep);
    world.screens.displayIsAsleep = true; // what keeps the tray hidden then
    advance(0.1);
    EXPECT_FALSE(shown());
    EXPECT_EQ(interval(), 2.0);
    post(awake);
    world.screens.displayIsAsleep = false;
    advance(2);
    EXPECT_TRUE(shown()) << "no second wait: the flag was clear";
}

TEST_P(Sleeping, asleepUnderTheOpenMenuItIsForgottenByTheFirstTickAfterTheWake) {
    start();
    world.trayPanel.click(0);
    post(asleep);
    post(awake);
    advance(3);
    world.trayPanel.click(0);
    EXPECT_EQ(presses(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Pairs, Sleeping,
                         testing::Values(std::pair{willSleep, didWake},
                                         std::pair{screensDidSleep, screensDidWake},
                                         std::pair{willSleep, screensDidWake},
                                         std::pair{screensDidSleep, didWake}));

struct Interrupted : StripFixture {};

TEST_F(Interrupted, switchedOffDuringACaptureItStandsDownInstead) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    start();
    controller->setEnabled(false);
    advance(1);
    EXPECT_FALSE(shown());
    EXPECT_EQ(world.trayPanel.creations, 0);
    EXPECT_EQ(controller->mirroredCount(), 0);
}

TEST_F(Interrupted, whatATickCapturedIsKeptAlsoWhenItStandsDown) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    start();
    controller->setEnabled(false);
    advance(0.5);
    ASSERT_EQ(captureCount(), 2U);
    controller->setEnabled(true);
    world.loop.runUntilIdle();
    EXPECT_TRUE(shown());
    EXPECT_EQ(captureCount(), 2U);
}

TEST_F(Interrupted, switchedOffByAnotherProgramDuringACaptureItHidesWhatWasShown) {
    start();
    advance(2.5);
    world.screenCapture.captureReply = CaptureReply::later(0.6);
    advance(0.5); // the fourth tick captures
    world.userDefaults.stored["OrrivaneStripEnabled"] = false;
    EXPECT_TRUE(shown());
    advance(0.6);
    EXPECT_FALSE(shown());
    EXPECT_EQ(controller->mirroredCount(), 0);
    EXPECT_EQ(interval(), 2.0);
}

TEST_F(Interrupted, switchedOffAndOnDuringACaptureItShows) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    start();
    controller->setEnabled(false);
    controller->setEnabled(true);
    advance(0.5);
    EXPECT_TRUE(shown());
    EXPECT_EQ(world.journal.count("allWindows"), 1U) << "by the tick that was under way";
}

TEST_F(Interrupted, aSleepAndItsWholeWakeDuringOneCaptureDoNotEndTheLoop) {
    world.screenCapture.contentReplies = {CaptureReply::later(1.9)};
    world.screenCapture.captureReply = CaptureReply::later(1.9);
    start();
    post(willSleep);
    post(didWake);
    advance(3);
    EXPECT_EQ(world.loop.repeatingTimerCount(), 1U);
    advance(2);
    EXPECT_TRUE(shown());
}

} // namespace
} // namespace orrivane
