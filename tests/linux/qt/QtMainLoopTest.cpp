#include "support/Pump.h"

#include <linux/qt/QtMainLoop.h>
#include <tests/support/contracts/MainLoopContract.h>

#include <QEventLoop>

#include <chrono>
#include <memory>

namespace orrivane {

namespace {

double steadySeconds() {
    using Seconds = std::chrono::duration<double>;
    return Seconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

struct QtLoopWorld {
    std::unique_ptr<QtMainLoop> body = std::make_unique<QtMainLoop>();

    MainLoop& loop() { return *body; }
    [[nodiscard]] double elapsed() const { return steadySeconds(); }
    void destroyLoop() { body.reset(); }
    void block(double seconds) {
        const double end = steadySeconds() + seconds;
        while (steadySeconds() < end) {
        }
    }
    template <typename Condition>
    bool pumpUntil(Condition condition) {
        return orrivane::pumpUntil(condition);
    }
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, MainLoopContract, QtLoopWorld);

TEST(QtMainLoop, runsPostedWorkAndTimersInsideANestedLoop) {
    QtMainLoop loop;
    int firings = 0;
    bool posted = false;
    const auto timer = loop.repeatingTimer(0.01, 0, [&] { ++firings; });
    bool left = false;
    loop.post([&] {
        QEventLoop dialog;
        loop.post([&] { posted = true; });
        const auto close = loop.repeatingTimer(0.01, 0, [&] {
            if (firings >= 2 && posted)
                dialog.quit();
        });
        const auto giveUp = loop.wakeUp(10, [&] { dialog.quit(); });
        dialog.exec();
        left = true;
    });
    ASSERT_TRUE(pumpUntil([&] { return left; }));
    EXPECT_GE(firings, 2);
    EXPECT_TRUE(posted);
}

TEST(QtMainLoop, anActionThatRunsALoopOfItsOwnDoesNotStopItsTimer) {
    QtMainLoop loop;
    int firings = 0;
    bool left = false;
    Subscription timer;
    timer = loop.repeatingTimer(0.01, 0, [&] {
        if (++firings != 1)
            return;
        QEventLoop dialog;
        const auto close = loop.repeatingTimer(0.01, 0, [&] {
            if (firings >= 3)
                dialog.quit();
        });
        const auto giveUp = loop.wakeUp(10, [&] { dialog.quit(); });
        dialog.exec();
        left = true;
    });
    ASSERT_TRUE(pumpUntil([&] { return left; }));
    EXPECT_GE(firings, 3);
}

TEST(QtMainLoop, dropsWhatWaitsWhenItIsClosedAndTakesNothingMore) {
    QtMainLoop loop;
    int runs = 0;
    const auto held = std::make_shared<int>();
    const auto action = [&runs, held] { ++runs; };
    const auto once = loop.wakeUp(0, action);
    const auto again = loop.repeatingTimer(0.001, 0, action);
    loop.post(action);
    loop.close();
    loop.post([&runs] { ++runs; });
    const auto later = loop.wakeUp(0, [&runs] { ++runs; });
    QtMainLoop other;
    bool passed = false;
    const auto end = other.wakeUp(0.02, [&] { passed = true; });
    ASSERT_TRUE(pumpUntil([&] { return passed; }));
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(held.use_count(), 2) << "of the loop's copies none is left";
}

TEST(QtMainLoop, countsWallClockTime) {
    const auto wallClock = [] {
        using Seconds = std::chrono::duration<double>;
        return Seconds(std::chrono::system_clock::now().time_since_epoch()).count();
    };
    const QtMainLoop loop;
    const double before = wallClock();
    const double now = loop.now();
    EXPECT_GE(now, before);
    EXPECT_LE(now, wallClock());
}

TEST(AlignedFiring, meetsTheCoarsestRoundFractionOfASecondInsideTheTolerance) {
    EXPECT_DOUBLE_EQ(alignedFiring(10.8, 0.3), 11.0);
    EXPECT_DOUBLE_EQ(alignedFiring(10.3, 0.3), 10.5);
    EXPECT_DOUBLE_EQ(alignedFiring(10.55, 0.3), 10.75);
    EXPECT_DOUBLE_EQ(alignedFiring(10.45, 0.6), 11.0);
    EXPECT_DOUBLE_EQ(alignedFiring(11.0, 0.3), 11.0);
}

TEST(AlignedFiring, isOnTimeWithoutTolerance) {
    EXPECT_DOUBLE_EQ(alignedFiring(10.3, 0), 10.3);
    EXPECT_DOUBLE_EQ(alignedFiring(10.26, 0.1), 10.26);
}

TEST(FollowingDue, staysOnTheFirstSchedule) {
    EXPECT_DOUBLE_EQ(followingDue(10, 2, 10.3), 12);
    EXPECT_DOUBLE_EQ(followingDue(10, 2, 11.9), 12);
}

TEST(FollowingDue, leavesOutWhatIsPast) {
    EXPECT_DOUBLE_EQ(followingDue(10, 2, 12), 14);
    EXPECT_DOUBLE_EQ(followingDue(10, 2, 17.5), 18);
    EXPECT_DOUBLE_EQ(followingDue(10, 2, 1000), 1002);
}

} // namespace orrivane
