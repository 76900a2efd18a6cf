#include <Orrivane/support/Awaiters.h>
#include <Orrivane/support/WhenAll.h>
#include <tests/support/CoroutineTest.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace orrivane {
namespace {

using Steps = std::vector<std::string>;
using Values = std::vector<int>;

class WhenAllTest : public CoroutineTest {
  protected:
    Steps steps;
};

/// Sleeps unless `seconds` is negative, then gives `value`.
Task<int> work(Steps& steps, int value, double seconds) {
    steps.push_back("begin " + std::to_string(value));
    if (seconds >= 0)
        co_await Sleep(seconds);
    steps.push_back("end " + std::to_string(value));
    co_return value;
}

Task<int> failing(Steps& steps, std::string message, double seconds) {
    if (seconds >= 0)
        co_await Sleep(seconds);
    steps.push_back(message);
    throw std::runtime_error(message);
}

template <typename... Tasks>
std::vector<Task<int>> list(Tasks... tasks) {
    std::vector<Task<int>> all;
    (all.push_back(std::move(tasks)), ...);
    return all;
}

TEST_F(WhenAllTest, theValuesComeInTheOrderOfTheTasksWhateverTheOrderOfTheirEnd) {
    std::optional<Values> values;
    expectSuspends(whenAll(list(work(steps, 1, 3), work(steps, 2, 1), work(steps, 3, 2))), values);
    loop.advance(3);
    EXPECT_EQ(values, (Values{1, 2, 3}));
    EXPECT_EQ(steps, (Steps{"begin 1", "begin 2", "begin 3", "end 2", "end 3", "end 1"}));
}

TEST_F(WhenAllTest, theTasksRunSideBySideAndLastAsLongAsTheLongest) {
    std::optional<Values> values;
    expectSuspends(whenAll(list(work(steps, 1, 2), work(steps, 2, 2), work(steps, 3, 2))), values);
    EXPECT_EQ(loop.timerCount(), 3U);
    loop.advance(1.99);
    EXPECT_FALSE(values);
    loop.advance(0.01);
    EXPECT_TRUE(values);
}

TEST_F(WhenAllTest, withNoTasksItGivesNothingAtOnce) {
    EXPECT_EQ(expectCompletesWithoutSuspending(whenAll(std::vector<Task<int>>())), Values{});
}

TEST_F(WhenAllTest, tasksThatDoNotSuspendAreDoneAtOnceInTheirOrder) {
    const auto values =
        expectCompletesWithoutSuspending(whenAll(list(work(steps, 1, -1), work(steps, 2, -1))));
    EXPECT_EQ(values, (Values{1, 2}));
    EXPECT_EQ(steps, (Steps{"begin 1", "end 1", "begin 2", "end 2"}));
}

TEST_F(WhenAllTest, tasksThatDoNotSuspendWaitForThoseThatDo) {
    std::optional<Values> values;
    expectSuspends(whenAll(list(work(steps, 1, -1), work(steps, 2, 1), work(steps, 3, -1))),
                   values);
    EXPECT_EQ(steps, (Steps{"begin 1", "end 1", "begin 2", "begin 3", "end 3"}));
    loop.advance(1);
    EXPECT_EQ(values, (Values{1, 2, 3}));
}

TEST_F(WhenAllTest, anErrorIsHandedOnAfterAllHaveEnded) {
    auto all = whenAll(list(failing(steps, "broken", 1), work(steps, 2, 3)));
    std::optional<Values> values;
    const auto handle = expectSuspends(std::move(all), values);
    loop.advance(2.99);
    EXPECT_TRUE(handle.isRunning());
    EXPECT_THROW(loop.advance(0.01), std::runtime_error);
    EXPECT_EQ(steps, (Steps{"begin 2", "broken", "end 2"}));
    EXPECT_FALSE(handle.isRunning());
    EXPECT_FALSE(values);
}

TEST_F(WhenAllTest, theFirstOfSeveralErrorsIsTheOneHandedOn) {
    const auto first = [](std::vector<Task<int>> tasks) -> Task<std::string> {
        try {
            co_await whenAll(std::move(tasks));
        } catch (const std::runtime_error& error) {
            co_return error.what();
        }
        co_return "no error";
    };
    EXPECT_EQ(expectCompletesWithin(
                  3, first(list(failing(steps, "second", 2), failing(steps, "first", 1)))),
              "first");
    EXPECT_EQ(expectCompletesWithoutSuspending(
                  first(list(failing(steps, "a", -1), failing(steps, "b", -1)))),
              "a");
}

TEST_F(WhenAllTest, cancellingEndsTheSleepsOfAllTasks) {
    std::optional<Values> values;
    const auto handle =
        expectSuspends(whenAll(list(work(steps, 1, 60), work(steps, 2, 90))), values);
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_EQ(values, (Values{1, 2}));
    EXPECT_EQ(loop.elapsed(), 0);
}

TEST_F(WhenAllTest, oneMayStandInsideAnother) {
    const auto sumOf = [](std::vector<Task<int>> tasks) -> Task<int> {
        int total = 0;
        for (const int value : co_await whenAll(std::move(tasks)))
            total += value;
        co_return total;
    };
    const auto values = expectCompletesWithin(
        2, whenAll(list(sumOf(list(work(steps, 1, 1), work(steps, 2, 2))),
                        sumOf(list(work(steps, 10, 2), work(steps, 20, -1))))));
    EXPECT_EQ(values, (Values{3, 30}));
}

TEST_F(WhenAllTest, aLoopThatDiesTakesAllBranchesAlong) {
    const auto held = std::make_shared<int>(0);
    const auto holding = [](std::shared_ptr<int> kept, double seconds) -> Task<int> {
        co_await Sleep(seconds);
        co_return ++*kept;
    };
    const auto discard = [](std::vector<Task<int>> tasks) -> Task<> {
        co_await whenAll(std::move(tasks));
    };
    {
        VirtualLoop dying;
        start(dying, discard(list(holding(held, 1), holding(held, 2), holding(held, 3))));
        dying.advance(1);
        EXPECT_EQ(*held, 1);
    }
    EXPECT_EQ(*held, 1);
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace orrivane
