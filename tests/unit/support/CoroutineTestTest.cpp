#include <Orrivane/support/Awaiters.h>
#include <tests/support/CoroutineTest.h>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace orrivane {
namespace {

// The checks of the base, reached from outside because a failure expected by the framework has to
// come out of a function without a receiver.
struct Checks : CoroutineTest {
    void TestBody() override {}
    using CoroutineTest::expectCompletesWithin;
    using CoroutineTest::expectCompletesWithoutSuspending;
    using CoroutineTest::expectSuspends;
    using CoroutineTest::loop;
};

Task<int> immediate() {
    co_return 1;
}
Task<int> sleeping() {
    co_await Sleep(1);
    co_return 2;
}
Task<> immediateVoid() {
    co_return;
}

TEST(CoroutineTestTest, aTaskThatMustNotSuspendAndDoesFails) {
    Checks checks;
    std::optional<int> value;
    EXPECT_NONFATAL_FAILURE(value = checks.expectCompletesWithoutSuspending(sleeping()),
                            "the task suspended");
    EXPECT_EQ(value, std::nullopt);
    checks.loop.advance(1);
}

TEST(CoroutineTestTest, aTaskThatMustSuspendAndDoesNotFails) {
    Checks checks;
    EXPECT_NONFATAL_FAILURE(checks.expectSuspends(immediateVoid()),
                            "the task ended without suspending");
}

TEST(CoroutineTestTest, aTaskThatTakesTooLongFails) {
    Checks checks;
    std::optional<int> value;
    EXPECT_NONFATAL_FAILURE(value = checks.expectCompletesWithin(0.5, sleeping()),
                            "the task still runs after 0.5 s");
    EXPECT_EQ(value, std::nullopt);
}

TEST(CoroutineTestTest, tasksThatDoAsTheyShouldPass) {
    Checks checks;
    EXPECT_EQ(checks.expectCompletesWithoutSuspending(immediate()), 1);
    std::optional<int> value;
    checks.expectSuspends(sleeping(), value);
    checks.loop.advance(1);
    EXPECT_EQ(value, 2);
    EXPECT_EQ(checks.expectCompletesWithin(1, sleeping()), 2);
}

TEST(CoroutineTestTest, onlyTheTaskUnderTestRuns) {
    Checks checks;
    int others = 0;
    checks.loop.post([&] { ++others; });
    checks.expectCompletesWithoutSuspending(immediateVoid());
    EXPECT_EQ(others, 0);
}

} // namespace
} // namespace orrivane
