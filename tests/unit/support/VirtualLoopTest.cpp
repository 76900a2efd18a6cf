#include <tests/support/VirtualLoop.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace orrivane {
namespace {

TEST(VirtualLoopTest, hoursOfTicksStayExact) {
    VirtualLoop loop;
    int ticks = 0;
    const auto timer = loop.repeatingTimer(0.1, 0, [&] { ++ticks; });
    for (int i = 0; i < 36000; ++i)
        loop.advance(0.1);
    EXPECT_EQ(ticks, 36000);
    EXPECT_EQ(loop.elapsed(), 3600);
}

TEST(VirtualLoopTest, callbacksRunAtTheirOwnInstant) {
    VirtualLoop loop;
    std::vector<double> instants;
    const auto timer = loop.repeatingTimer(2, 0.6, [&] { instants.push_back(loop.elapsed()); });
    loop.advance(7);
    EXPECT_EQ(instants, (std::vector<double>{2, 4, 6}));
    EXPECT_EQ(loop.elapsed(), 7);
}

TEST(VirtualLoopTest, timersDueTogetherFireInTheOrderOfTheirCreation) {
    VirtualLoop loop;
    std::vector<int> order;
    const auto slow = loop.repeatingTimer(2, 0, [&] { order.push_back(1); });
    const auto fast = loop.repeatingTimer(1, 0, [&] { order.push_back(2); });
    loop.advance(2);
    EXPECT_EQ(order, (std::vector{2, 1, 2}));
}

TEST(VirtualLoopTest, workPostedByATimerRunsBeforeTheNextTimer) {
    VirtualLoop loop;
    std::vector<int> order;
    const auto first = loop.wakeUp(1, [&] { loop.post([&] { order.push_back(1); }); });
    const auto second = loop.wakeUp(1, [&] { order.push_back(2); });
    loop.advance(1);
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST(VirtualLoopTest, theInstalledTimersCanBeRead) {
    VirtualLoop loop;
    auto repeating = loop.repeatingTimer(2, 0.6, [] {});
    const auto once = loop.wakeUp(0.5, [] {});
    using Timers = std::vector<VirtualLoop::InstalledTimer>;
    EXPECT_EQ(loop.timers(), (Timers{{0.5, 0, false, 0.5}, {2, 0.6, true, 2}}));
    loop.advance(1);
    EXPECT_EQ(loop.timers(), (Timers{{2, 0.6, true, 1}}));
    EXPECT_EQ(loop.repeatingTimerCount(), 1U);
    repeating.reset();
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST(VirtualLoopTest, theWallClockMayGoBackWhileTimersGoOn) {
    VirtualLoop loop;
    int ticks = 0;
    const auto timer = loop.repeatingTimer(1, 0, [&] { ++ticks; });
    const double before = loop.now();
    loop.advance(2);
    EXPECT_EQ(loop.now(), before + 2);
    loop.setNow(before - 100);
    EXPECT_EQ(ticks, 2);
    loop.advance(3);
    EXPECT_EQ(loop.now(), before - 97);
    EXPECT_EQ(ticks, 5);
    EXPECT_EQ(loop.elapsed(), 5);
}

TEST(VirtualLoopTest, aBusyThreadMissesFiringsAndKeepsTheRhythm) {
    VirtualLoop loop;
    std::vector<double> instants;
    const auto timer = loop.repeatingTimer(1, 0, [&] { instants.push_back(loop.elapsed()); });
    loop.block(3.5);
    EXPECT_TRUE(instants.empty());
    loop.advance(1);
    EXPECT_EQ(instants, (std::vector<double>{3.5, 4}));
}

TEST(VirtualLoopTest, whatACallbackThrowsLeavesTheLoopUsable) {
    VirtualLoop loop;
    int ran = 0;
    loop.post([] { throw std::runtime_error("refused"); });
    loop.post([&] { ++ran; });
    EXPECT_THROW(loop.runUntilIdle(), std::runtime_error);
    loop.runUntilIdle();
    EXPECT_EQ(ran, 1);
}

TEST(VirtualLoopTest, workThatPostsItselfForEverIsAnErrorNotAHang) {
    VirtualLoop loop;
    std::function<void()> again = [&] { loop.post(again); };
    loop.post(again);
    EXPECT_THROW(loop.runUntilIdle(), std::runtime_error);
}

} // namespace
} // namespace orrivane
