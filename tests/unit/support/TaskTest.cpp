#include <Orrivane/support/Awaiters.h>
#include <Orrivane/support/Task.h>
#include <tests/support/CoroutineTest.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace orrivane {
namespace {

using Steps = std::vector<std::string>;

class TaskTest : public CoroutineTest {
  protected:
    Steps steps;
};

Task<> note(Steps& steps, std::string step) {
    steps.push_back(std::move(step));
    co_return;
}

Task<int> number(int value) {
    co_return value;
}

Task<int> sum(int a, int b) {
    co_return co_await number(a) + co_await number(b);
}

Task<int> refused() {
    throw std::runtime_error("refused");
    co_return 0;
}

Task<> holding(std::shared_ptr<int> held, double seconds) {
    co_await Sleep(seconds);
    ++*held;
}

TEST_F(TaskTest, nothingRunsBeforeATaskIsStarted) {
    auto task = note(steps, "ran");
    loop.runUntilIdle();
    EXPECT_TRUE(steps.empty());
    start(loop, std::move(task));
    loop.runUntilIdle();
    EXPECT_EQ(steps, Steps{"ran"});
}

TEST_F(TaskTest, aStartedTaskRunsFromTheNextTurnOn) {
    start(loop, note(steps, "task"));
    steps.emplace_back("caller");
    loop.runUntilIdle();
    EXPECT_EQ(steps, (Steps{"caller", "task"}));
}

TEST_F(TaskTest, startedTasksRunInTheOrderOfTheirStart) {
    start(loop, note(steps, "a"));
    start(loop, note(steps, "b"));
    loop.runUntilIdle();
    EXPECT_EQ(steps, (Steps{"a", "b"}));
}

TEST_F(TaskTest, awaitingATaskGivesItsValueWithoutSuspending) {
    EXPECT_EQ(expectCompletesWithoutSuspending(sum(3, 4)), 7);
}

TEST_F(TaskTest, aTaskGivesValuesThatCanOnlyBeMoved) {
    const auto make = []() -> Task<std::unique_ptr<int>> { co_return std::make_unique<int>(5); };
    const auto value = expectCompletesWithoutSuspending(make());
    ASSERT_TRUE(value);
    EXPECT_EQ(**value, 5);
}

TEST_F(TaskTest, aTaskThatSleepsSuspendsAndGivesItsValueLater) {
    const auto later = []() -> Task<int> {
        co_await Sleep(2);
        co_return co_await sum(20, 1);
    };
    std::optional<int> value;
    const auto handle = expectSuspends(later(), value);
    loop.advance(1.9);
    EXPECT_EQ(value, std::nullopt);
    EXPECT_TRUE(handle.isRunning());
    loop.advance(0.1);
    EXPECT_EQ(value, 21);
    EXPECT_FALSE(handle.isRunning());
}

TEST_F(TaskTest, anErrorReachesTheAwaitingTask) {
    const auto guarded = []() -> Task<std::string> {
        try {
            co_await refused();
        } catch (const std::runtime_error& error) {
            co_return error.what();
        }
        co_return "no error";
    };
    EXPECT_EQ(expectCompletesWithoutSuspending(guarded()), "refused");
}

TEST_F(TaskTest, anErrorPassesThroughTasksThatDoNotCatchIt) {
    const auto middle = []() -> Task<int> { co_return 1 + co_await refused(); };
    EXPECT_THROW(expectCompletesWithoutSuspending(middle()), std::runtime_error);
}

TEST_F(TaskTest, anErrorNobodyAwaitedLeavesThroughTheLoopAndOthersGoOn) {
    const auto failing = []() -> Task<> { co_await refused(); };
    const auto handle = start(loop, failing());
    start(loop, note(steps, "other"));
    EXPECT_THROW(loop.runUntilIdle(), std::runtime_error);
    EXPECT_FALSE(handle.isRunning());
    loop.runUntilIdle();
    EXPECT_EQ(steps, Steps{"other"});
}

TEST_F(TaskTest, aTaskThatIsNeverStartedReleasesWhatItHolds) {
    const auto held = std::make_shared<int>(0);
    {
        auto task = holding(held, 1);
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(*held, 0);
}

TEST_F(TaskTest, assigningATaskDropsTheOneBefore) {
    const auto first = std::make_shared<int>(0);
    const auto second = std::make_shared<int>(0);
    auto task = holding(first, 1);
    task = holding(second, 1);
    EXPECT_EQ(first.use_count(), 1);
    EXPECT_EQ(second.use_count(), 2);
    start(loop, std::move(task));
    loop.advance(1);
    EXPECT_EQ(*second, 1);
    EXPECT_EQ(second.use_count(), 1);
}

TEST_F(TaskTest, assigningATaskToItselfKeepsItsWork) {
    auto task = note(steps, "ran");
    auto& same = task;
    task = std::move(same);
    start(loop, std::move(task));
    loop.runUntilIdle();
    EXPECT_EQ(steps, Steps{"ran"});
}

TEST_F(TaskTest, aTaskThatEndedReleasesWhatItHolds) {
    const auto held = std::make_shared<int>(0);
    expectCompletesWithin(1, holding(held, 1));
    EXPECT_EQ(*held, 1);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(TaskTest, aTaskWhoseHandleWasDroppedRunsToItsEnd) {
    const auto held = std::make_shared<int>(0);
    {
        const auto handle = start(loop, holding(held, 1));
    }
    loop.advance(1);
    EXPECT_EQ(*held, 1);
}

TEST_F(TaskTest, aLoopThatDiesTakesItsTasksAlongWithoutRunningThem) {
    const auto held = std::make_shared<int>(0);
    TaskHandle sleeping;
    TaskHandle posted;
    {
        VirtualLoop dying;
        sleeping = start(dying, holding(held, 1));
        dying.runUntilIdle();
        posted = start(dying, holding(held, 1));
        EXPECT_EQ(held.use_count(), 3);
    }
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(*held, 0);
    EXPECT_FALSE(sleeping.isRunning());
    EXPECT_FALSE(posted.isRunning());
}

TEST_F(TaskTest, cancellingATaskThatEndedDoesNothing) {
    const auto handle = start(loop, note(steps, "ran"));
    loop.runUntilIdle();
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_EQ(steps, Steps{"ran"});
}

TEST_F(TaskTest, anEmptyHandleRefersToNothing) {
    const TaskHandle handle;
    EXPECT_FALSE(handle.isRunning());
    handle.cancel();
}

TEST_F(TaskTest, aCancelledTaskStillRunsToItsEnd) {
    const auto gesture = [](Steps& taken) -> Task<> {
        taken.emplace_back("press");
        co_await Sleep(1);
        taken.emplace_back("drag");
        co_await Sleep(1);
        taken.emplace_back("release");
    };
    const auto handle = expectSuspends(gesture(steps));
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_EQ(steps, (Steps{"press", "drag", "release"}));
    EXPECT_EQ(loop.elapsed(), 0);
    EXPECT_FALSE(handle.isRunning());
}

TEST_F(TaskTest, cancellingBeforeTheFirstTurnReachesTheFirstSleep) {
    const auto held = std::make_shared<int>(0);
    const auto handle = start(loop, holding(held, 60));
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_EQ(*held, 1);
}

TEST_F(TaskTest, whoWantsToKnowOfACancellationIsToldOnceInsideTheCall) {
    const auto context = std::make_shared<TaskContext>(loop);
    const auto observer = context->onCancel([&] { steps.emplace_back("cancelled"); });
    EXPECT_FALSE(context->isCancelled());
    context->cancel();
    context->cancel();
    EXPECT_TRUE(context->isCancelled());
    EXPECT_EQ(steps, Steps{"cancelled"});
}

TEST_F(TaskTest, cancellingReachesATaskThatIsAwaited) {
    const auto outer = [](Steps& taken) -> Task<> {
        const auto inner = []() -> Task<SleepOutcome> { co_return co_await Sleep(60); };
        const auto outcome = co_await inner();
        taken.emplace_back(outcome == SleepOutcome::cancelled ? "cancelled" : "elapsed");
    };
    const auto handle = expectSuspends(outer(steps));
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_EQ(steps, Steps{"cancelled"});
}

} // namespace
} // namespace orrivane
