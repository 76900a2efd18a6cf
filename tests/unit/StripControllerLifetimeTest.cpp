#include "StripFixture.h"

namespace orrivane {
namespace {

using enum SystemNotification;

// The loop outlives the controller and still holds what the controller began.
struct Lifetime : StripFixture {
    [[nodiscard]] std::size_t censuses() const { return world.journal.count("allWindows"); }
    void destroyAndLetTimePass() {
        controller.reset();
        advance(10);
        EXPECT_FALSE(shown());
        EXPECT_EQ(world.loop.timerCount(), 0U);
    }
};

TEST_F(Lifetime, aControllerDestroyedBeforeItsFirstTickBeganNeverTicks) {
    controller->start();
    destroyAndLetTimePass();
    EXPECT_EQ(censuses(), 0U);
}

TEST_F(Lifetime, aControllerDestroyedBeforeAWakeWasHandledNeverResumes) {
    start();
    post(willSleep);
    const auto before = censuses();
    world.workspace.post(didWake);
    destroyAndLetTimePass();
    EXPECT_EQ(censuses(), before);
}

TEST_F(Lifetime, aControllerDestroyedWithinTheWaitAfterAWakeNeverResumes) {
    start();
    post(willSleep);
    const auto before = censuses();
    post(didWake);
    advance(1);
    destroyAndLetTimePass();
    EXPECT_EQ(censuses(), before);
}

TEST_F(Lifetime, aControllerDestroyedUnderACaptureShowsNothing) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    start();
    ASSERT_EQ(captureCount(), 2U);
    destroyAndLetTimePass();
    EXPECT_EQ(world.trayPanel.creations, 0);
}

TEST_F(Lifetime, aControllerDestroyedUnderASnapshotShowsNothing) {
    world.screenCapture.contentReply = CaptureReply::later(0.5);
    start();
    ASSERT_EQ(world.screenCapture.contentCalls, 1);
    destroyAndLetTimePass();
    EXPECT_EQ(world.trayPanel.creations, 0);
}

TEST_F(Lifetime, aControllerDestroyedUnderACaptureThatNeverAnswersShowsNothing) {
    world.screenCapture.captureReply = CaptureReply::never();
    start();
    ASSERT_EQ(world.screenCapture.unansweredCount(), 2U);
    destroyAndLetTimePass();
    world.screenCapture.answerUnanswered();
    world.loop.runUntilIdle();
    EXPECT_EQ(world.trayPanel.creations, 0);
}

TEST_F(Lifetime, aNotificationAfterTheEndReachesNobody) {
    start();
    controller.reset();
    const auto before = censuses();
    for (const auto notification : {didActivateApplication, willSleep, screensDidSleep, didWake,
                                    screensDidWake, didChangeScreenParameters})
        post(notification);
    EXPECT_EQ(censuses(), before);
}

TEST_F(Lifetime, aSecondaryActionThatOutlivesTheControllerDoesNothing) {
    world.accessibility.hasSecondaryAction = true;
    start();
    const auto button = world.trayPanel.buttons().at(0);
    controller.reset();
    button.secondaryAction.run();
    EXPECT_EQ(presses(), 0U);
}

} // namespace
} // namespace orrivane
