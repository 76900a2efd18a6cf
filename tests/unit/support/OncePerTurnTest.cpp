#include <Orrivane/support/Observable.h>
#include <Orrivane/support/OncePerTurn.h>
#include <tests/support/VirtualLoop.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace orrivane {
namespace {

class OncePerTurnTest : public ::testing::Test {
  protected:
    VirtualLoop loop;
    int runs = 0;
};

TEST_F(OncePerTurnTest, manyRequestsInOneTurnRunTheActionOnceOnTheNext) {
    OncePerTurn redraw(loop, [&] { ++runs; });
    redraw.request();
    redraw.request();
    redraw.request();
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(loop.pendingPosts(), 1U);
    loop.runUntilIdle();
    EXPECT_EQ(runs, 1);
}

TEST_F(OncePerTurnTest, withoutARequestNothingRuns) {
    const OncePerTurn redraw(loop, [&] { ++runs; });
    loop.runUntilIdle();
    EXPECT_EQ(runs, 0);
}

TEST_F(OncePerTurnTest, aRequestInALaterTurnRunsItAgain) {
    OncePerTurn redraw(loop, [&] { ++runs; });
    for (int turn = 1; turn <= 3; ++turn) {
        redraw.request();
        loop.runUntilIdle();
        EXPECT_EQ(runs, turn);
    }
}

TEST_F(OncePerTurnTest, aRequestFromTheActionItselfIsKeptForTheNextTurn) {
    std::optional<OncePerTurn> redraw;
    redraw.emplace(loop, [&] {
        if (++runs < 3)
            redraw->request();
    });
    redraw->request();
    loop.runUntilIdle();
    EXPECT_EQ(runs, 3);
}

TEST_F(OncePerTurnTest, whatIsStillRequestedDiesWithItsOwner) {
    {
        OncePerTurn redraw(loop, [&] { ++runs; });
        redraw.request();
    }
    loop.runUntilIdle();
    EXPECT_EQ(runs, 0);
}

TEST_F(OncePerTurnTest, theActionMayDestroyItsOwner) {
    auto redraw = std::make_unique<std::optional<OncePerTurn>>();
    redraw->emplace(loop, [&, held = std::make_shared<int>(1)] {
        redraw.reset();
        runs += *held;
    });
    (*redraw)->request();
    loop.runUntilIdle();
    EXPECT_EQ(runs, 1);
}

TEST_F(OncePerTurnTest, aViewRedrawsOnceHoweverManyFieldsOfItsModelChanged) {
    ObservableObject model;
    Published<int> count{model, 0};
    Published<bool> enabled{model, false};
    int drawn = 0;
    OncePerTurn redraw(loop, [&] {
        ++runs;
        drawn = count;
    });
    const auto observer = model.observe([&] { redraw.request(); });
    count = 4;
    enabled = true;
    count = 5;
    loop.runUntilIdle();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(drawn, 5);
}

} // namespace
} // namespace orrivane
