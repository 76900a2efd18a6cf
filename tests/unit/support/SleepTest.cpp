#include <Orrivane/support/Awaiters.h>
#include <tests/support/CoroutineTest.h>

#include <gtest/gtest.h>

#include <vector>

namespace orrivane {
namespace {

using Outcomes = std::vector<SleepOutcome>;

class SleepTest : public CoroutineTest {
  protected:
    Outcomes outcomes;
};

Task<> sleeping(Outcomes& outcomes, double seconds, int times = 1) {
    for (int i = 0; i < times; ++i)
        outcomes.push_back(co_await Sleep(seconds));
}

TEST_F(SleepTest, endsWhenItsTimeHasPassed) {
    expectSuspends(sleeping(outcomes, 0.25));
    loop.advance(0.249);
    EXPECT_TRUE(outcomes.empty());
    loop.advance(0.001);
    EXPECT_EQ(outcomes, Outcomes{SleepOutcome::elapsed});
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(SleepTest, aSleepOfNoLengthStillSuspends) {
    expectSuspends(sleeping(outcomes, 0));
    loop.runUntilIdle();
    EXPECT_EQ(outcomes, Outcomes{SleepOutcome::elapsed});
    EXPECT_EQ(loop.elapsed(), 0);
}

TEST_F(SleepTest, aNegativeSleepEndsAtOnce) {
    expectSuspends(sleeping(outcomes, -5));
    loop.runUntilIdle();
    EXPECT_EQ(outcomes, Outcomes{SleepOutcome::elapsed});
}

TEST_F(SleepTest, sleepsInARowAddUp) {
    expectCompletesWithin(0.3, sleeping(outcomes, 0.1, 3));
    EXPECT_EQ(outcomes.size(), 3U);
}

TEST_F(SleepTest, sleepersThatFallDueTogetherWakeInTheOrderInWhichTheyFellAsleep) {
    std::vector<int> order;
    const auto sleeper = [](std::vector<int>& woken, int name, double seconds) -> Task<> {
        co_await Sleep(seconds);
        woken.push_back(name);
    };
    start(loop, sleeper(order, 1, 2));
    start(loop, sleeper(order, 2, 1));
    start(loop, sleeper(order, 3, 2));
    loop.advance(2);
    EXPECT_EQ(order, (std::vector{2, 1, 3}));
}

TEST_F(SleepTest, cancellingEndsItEarlyAndSaysSo) {
    const auto handle = expectSuspends(sleeping(outcomes, 60));
    loop.advance(1);
    handle.cancel();
    EXPECT_TRUE(outcomes.empty()) << "the task went on inside the call that cancelled it";
    loop.runUntilIdle();
    EXPECT_EQ(outcomes, Outcomes{SleepOutcome::cancelled});
    EXPECT_EQ(loop.elapsed(), 1);
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(SleepTest, aTaskThatWasCancelledBeforeDoesNotSleepAtAll) {
    const auto handle = start(loop, sleeping(outcomes, 60, 2));
    handle.cancel();
    loop.runNewestPost();
    EXPECT_EQ(outcomes, (Outcomes{SleepOutcome::cancelled, SleepOutcome::cancelled}));
    EXPECT_FALSE(handle.isRunning());
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(SleepTest, cancellingTwiceEndsItOnce) {
    const auto handle = expectSuspends(sleeping(outcomes, 60));
    handle.cancel();
    handle.cancel();
    loop.runUntilIdle();
    handle.cancel();
    loop.advance(120);
    EXPECT_EQ(outcomes, Outcomes{SleepOutcome::cancelled});
}

TEST_F(SleepTest, cancellingAfterItElapsedButBeforeTheTaskWentOnChangesNothing) {
    TaskHandle handle;
    handle = expectSuspends(sleeping(outcomes, 1));
    // Due at the same instant as the sleep, and created after it.
    const auto canceller = loop.wakeUp(1, [&] { handle.cancel(); });
    loop.block(1);
    loop.runUntilIdle();
    EXPECT_EQ(outcomes, Outcomes{SleepOutcome::elapsed});
}

TEST_F(SleepTest, aSleepThatFallsDueAfterItWasCancelledStaysCancelled) {
    const auto handle = expectSuspends(sleeping(outcomes, 1));
    handle.cancel();
    loop.block(5);
    loop.runUntilIdle();
    EXPECT_EQ(outcomes, Outcomes{SleepOutcome::cancelled});
}

TEST_F(SleepTest, aTaskMayCancelItself) {
    TaskHandle handle;
    const auto task = [](Outcomes& seen, const TaskHandle& self) -> Task<> {
        self.cancel();
        seen.push_back(co_await Sleep(60));
    };
    handle = start(loop, task(outcomes, handle));
    loop.runUntilIdle();
    EXPECT_EQ(outcomes, Outcomes{SleepOutcome::cancelled});
}

TEST_F(SleepTest, settingTheClockNeitherShortensNorLengthensASleep) {
    expectSuspends(sleeping(outcomes, 10));
    loop.setNow(loop.now() - 3600);
    loop.advance(9.9);
    EXPECT_TRUE(outcomes.empty());
    loop.setNow(loop.now() + 7200);
    loop.runUntilIdle();
    EXPECT_TRUE(outcomes.empty());
    loop.advance(0.1);
    EXPECT_EQ(outcomes, Outcomes{SleepOutcome::elapsed});
}

} // namespace
} // namespace orrivane
