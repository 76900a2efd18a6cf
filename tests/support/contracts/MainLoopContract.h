#pragma once

#include <Orrivane/platform/MainLoop.h>
#include <tests/support/contracts/Contract.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace orrivane {

/// The world also offers: `MainLoop& loop()`, `double elapsed()` (steady seconds), `void
/// block(double seconds)` (keeps the thread busy) and `void destroyLoop()`.
template <typename World>
class MainLoopContract : public Contract<World> {
  protected:
    using Steps = std::vector<std::string>;

    MainLoop& loop() { return this->world.loop(); }
    /// Lets a few firings of a timer pass in which something else could happen.
    bool letTimePass() {
        int firings = 0;
        const auto witness = loop().repeatingTimer(0.02, 0, [&] { ++firings; });
        return this->world.pumpUntil([&] { return firings >= 5; });
    }

    // What a clock may be off by.
    static constexpr double slack = 0.002;
};

TYPED_TEST_SUITE_P(MainLoopContract);

TYPED_TEST_P(MainLoopContract, postedWorkRunsAfterTheCallInTheOrderOfPosting) {
    std::vector<int> order;
    for (const int work : {1, 2, 3})
        this->loop().post([&order, work] { order.push_back(work); });
    EXPECT_TRUE(order.empty());
    ASSERT_TRUE(this->world.pumpUntil([&] { return order.size() >= 3; }));
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TYPED_TEST_P(MainLoopContract, workPostedByWorkRunsAfterWhatWasPostedBefore) {
    typename TestFixture::Steps steps;
    this->loop().post([&] {
        this->loop().post([&] { steps.emplace_back("posted later"); });
        steps.emplace_back("first");
    });
    this->loop().post([&] { steps.emplace_back("second"); });
    ASSERT_TRUE(this->world.pumpUntil([&] { return steps.size() >= 3; }));
    EXPECT_EQ(steps, (typename TestFixture::Steps{"first", "second", "posted later"}));
}

TYPED_TEST_P(MainLoopContract, workPostedByAnotherThreadRunsOnTheLoopsOwn) {
    std::thread::id ran;
    std::thread([&] { this->loop().post([&] { ran = std::this_thread::get_id(); }); }).join();
    ASSERT_TRUE(this->world.pumpUntil([&] { return ran != std::thread::id(); }));
    EXPECT_EQ(ran, std::this_thread::get_id());
}

TYPED_TEST_P(MainLoopContract, aRepeatingTimerFiresAgainAndAgainButNeverEarly) {
    const double begin = this->world.elapsed();
    std::vector<double> instants;
    const auto timer = this->loop().repeatingTimer(
        0.05, 0, [&] { instants.push_back(this->world.elapsed() - begin); });
    EXPECT_TRUE(instants.empty());
    ASSERT_TRUE(this->world.pumpUntil([&] { return instants.size() >= 3; }));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_GE(instants[i], 0.05 * static_cast<double>(i + 1) - this->slack);
}

TYPED_TEST_P(MainLoopContract, aTimerWhoseHandleDiedDoesNotFire) {
    int firings = 0;
    auto timer = this->loop().repeatingTimer(0.02, 0, [&] { ++firings; });
    auto wakeUp = this->loop().wakeUp(0.02, [&] { ++firings; });
    timer.reset();
    wakeUp.reset();
    ASSERT_TRUE(this->letTimePass());
    EXPECT_EQ(firings, 0);
}

TYPED_TEST_P(MainLoopContract, aTimerMayEndItselfAndKeepsWhatItHoldsUntilItsCallEnds) {
    int firings = 0;
    std::weak_ptr<int> watched;
    Subscription timer;
    {
        const auto held = std::make_shared<int>(1);
        watched = held;
        timer = this->loop().repeatingTimer(0.02, 0, [&timer, &firings, held] {
            timer.reset();
            firings += *held;
        });
    }
    ASSERT_TRUE(this->world.pumpUntil([&] { return firings > 0; }));
    ASSERT_TRUE(this->letTimePass());
    EXPECT_EQ(firings, 1);
    EXPECT_TRUE(watched.expired());
}

TYPED_TEST_P(MainLoopContract, aTimerMayPutAnotherOneInItsPlace) {
    int slow = 0;
    int fast = 0;
    Subscription timer;
    timer = this->loop().repeatingTimer(0.04, 0, [&] {
        ++slow;
        timer = this->loop().repeatingTimer(0.02, 0, [&] { ++fast; });
    });
    ASSERT_TRUE(this->world.pumpUntil([&] { return fast >= 2; }));
    EXPECT_EQ(slow, 1);
}

TYPED_TEST_P(MainLoopContract, firingsMissedWhileTheThreadWasBusyAreNotMadeUpFor) {
    int firings = 0;
    const auto timer = this->loop().repeatingTimer(0.1, 0, [&] { ++firings; });
    this->world.block(1.02);
    bool awake = false;
    const auto wakeUp = this->loop().wakeUp(0.03, [&] { awake = true; });
    ASSERT_TRUE(this->world.pumpUntil([&] { return awake; }));
    EXPECT_GE(firings, 1);
    EXPECT_LE(firings, 2);
}

TYPED_TEST_P(MainLoopContract, aWakeUpFiresOnceAndNotEarly) {
    const double begin = this->world.elapsed();
    std::vector<double> instants;
    const auto wakeUp =
        this->loop().wakeUp(0.05, [&] { instants.push_back(this->world.elapsed() - begin); });
    ASSERT_TRUE(this->world.pumpUntil([&] { return !instants.empty(); }));
    ASSERT_TRUE(this->letTimePass());
    ASSERT_EQ(instants.size(), 1U);
    EXPECT_GE(instants[0], 0.05 - this->slack);
}

TYPED_TEST_P(MainLoopContract, aWakeUpWithoutDelayStillRunsAfterTheCall) {
    int firings = 0;
    const auto now = this->loop().wakeUp(0, [&] { ++firings; });
    const auto past = this->loop().wakeUp(-1, [&] { ++firings; });
    EXPECT_EQ(firings, 0);
    ASSERT_TRUE(this->world.pumpUntil([&] { return firings == 2; }));
}

TYPED_TEST_P(MainLoopContract, wakeUpsFireInTheOrderOfTheirDelays) {
    std::vector<int> order;
    const auto second = this->loop().wakeUp(0.1, [&] { order.push_back(2); });
    const auto first = this->loop().wakeUp(0.05, [&] { order.push_back(1); });
    ASSERT_TRUE(this->world.pumpUntil([&] { return order.size() == 2; }));
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TYPED_TEST_P(MainLoopContract, theClockRunsWithTheLoop) {
    const double before = this->loop().now();
    const double begin = this->world.elapsed();
    bool awake = false;
    const auto wakeUp = this->loop().wakeUp(0.1, [&] { awake = true; });
    ASSERT_TRUE(this->world.pumpUntil([&] { return awake; }));
    const double passed = this->world.elapsed() - begin;
    EXPECT_NEAR(this->loop().now() - before, passed, 0.05);
}

TYPED_TEST_P(MainLoopContract, aLoopThatDiesDropsWhatItHoldsWithoutRunningIt) {
    int ran = 0;
    const auto held = std::make_shared<int>(0);
    this->loop().post([held, &ran] { ++ran; });
    auto timer = this->loop().repeatingTimer(0.01, 0, [held, &ran] { ++ran; });
    auto wakeUp = this->loop().wakeUp(0.01, [held, &ran] { ++ran; });
    this->world.destroyLoop();
    EXPECT_EQ(ran, 0);
    EXPECT_EQ(held.use_count(), 1);
    // The handles outlive the loop.
    timer.reset();
    wakeUp.reset();
}

TYPED_TEST_P(MainLoopContract, aLoopThatDiesIgnoresWhatIsPostedMeanwhile) {
    struct Poster {
        MainLoop& loop;
        std::shared_ptr<int> held;
        ~Poster() {
            loop.post([copy = held] { ++*copy; });
        }
    };
    const auto held = std::make_shared<int>(0);
    const auto makePoster = [&] { return std::make_shared<Poster>(this->loop(), held); };
    this->loop().post([poster = makePoster()] {});
    const auto timer = this->loop().wakeUp(60, [poster = makePoster()] {});
    this->world.destroyLoop();
    EXPECT_EQ(*held, 0);
    EXPECT_EQ(held.use_count(), 1);
}

REGISTER_TYPED_TEST_SUITE_P(
    MainLoopContract, postedWorkRunsAfterTheCallInTheOrderOfPosting,
    workPostedByWorkRunsAfterWhatWasPostedBefore, workPostedByAnotherThreadRunsOnTheLoopsOwn,
    aRepeatingTimerFiresAgainAndAgainButNeverEarly, aTimerWhoseHandleDiedDoesNotFire,
    aTimerMayEndItselfAndKeepsWhatItHoldsUntilItsCallEnds, aTimerMayPutAnotherOneInItsPlace,
    firingsMissedWhileTheThreadWasBusyAreNotMadeUpFor, aWakeUpFiresOnceAndNotEarly,
    aWakeUpWithoutDelayStillRunsAfterTheCall, wakeUpsFireInTheOrderOfTheirDelays,
    theClockRunsWithTheLoop, aLoopThatDiesDropsWhatItHoldsWithoutRunningIt,
    aLoopThatDiesIgnoresWhatIsPostedMeanwhile);

} // namespace orrivane
