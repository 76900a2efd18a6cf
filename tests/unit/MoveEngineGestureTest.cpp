#include <Orrivane/MoveEngine.h>

#include <tests/support/CoroutineTest.h>
#include <tests/support/ScriptedEventPoster.h>
#include <tests/support/ScriptedLog.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {
namespace {

constexpr double gestureLength = 0.150 + 12 * 0.025 + 0.100;

struct MoveEngineGestureTest : CoroutineTest {
    CallJournal journal;
    ScriptedEventPoster poster{journal, &loop};
    ScriptedLog log{journal};

    /// The middle of its frame is (1000, 12).
    static constexpr StatusItemWindow item{7, {{985, 0}, {30, 24}}, true, false};

    Task<bool> move(double toX = 700) { return MoveEngine::move(item, toX, poster, log); }

    [[nodiscard]] std::vector<MouseEventType> types() const {
        std::vector<MouseEventType> result;
        for (const auto& event : poster.posted)
            result.push_back(event.type);
        return result;
    }
    static std::vector<MouseEventType> wholeGesture() {
        std::vector<MouseEventType> result(12, MouseEventType::leftMouseDragged);
        result.insert(result.begin(), MouseEventType::leftMouseDown);
        result.push_back(MouseEventType::leftMouseUp);
        return result;
    }
    void expectEverythingReleased() const {
        EXPECT_EQ(poster.sourcesReleased, poster.sourcesCreated);
        EXPECT_FALSE(poster.holdsButton);
        EXPECT_FALSE(poster.holdsCommand);
        EXPECT_FALSE(MoveEngine::isMoving());
    }
};

TEST_F(MoveEngineGestureTest, theGestureIsAPressTwelveDragsAndARelease) {
    EXPECT_EQ(expectCompletesWithin(1, move()), true);
    EXPECT_EQ(types(), wholeGesture());
    EXPECT_TRUE(log.lines.empty());
    expectEverythingReleased();
}

TEST_F(MoveEngineGestureTest, itGoesFromTheItemsMiddleAlongTheEasedPointsToTheTarget) {
    EXPECT_EQ(expectCompletesWithin(1, move()), true);
    ASSERT_EQ(poster.posted.size(), 14U);
    EXPECT_EQ(poster.posted.front().position, (Point{1000, 12}));
    const auto points = MoveEngine::dragPoints({1000, 12}, 700);
    for (std::size_t i = 0; i < points.size(); ++i)
        EXPECT_EQ(poster.posted[i + 1].position, points[i]) << "drag " << i;
    EXPECT_EQ(poster.posted.back().position, (Point{700, 12}));
}

TEST_F(MoveEngineGestureTest, theItemsMiddleIsThatOfItsStandardisedFrame) {
    const StatusItemWindow turned{7, {{1015, 24}, {-30, -24}}, true, false};
    expectCompletesWithin(1, MoveEngine::move(turned, 700, poster, log));
    EXPECT_EQ(poster.posted.front().position, (Point{1000, 12}));
}

TEST_F(MoveEngineGestureTest, everyEventComesAtItsTimeAndNoPauseIsMerged) {
    expectCompletesWithin(1, move());
    ASSERT_EQ(poster.posted.size(), 14U);
    EXPECT_DOUBLE_EQ(poster.posted[0].at, 0);
    for (int step = 0; step < 12; ++step)
        EXPECT_NEAR(poster.posted[static_cast<std::size_t>(step) + 1].at, 0.150 + step * 0.025,
                    1e-9)
            << "drag " << step;
    // The pause of the last step and the one before the release.
    EXPECT_NEAR(poster.posted[13].at - poster.posted[12].at, 0.125, 1e-9);
    EXPECT_NEAR(poster.posted[13].at, gestureLength, 1e-9);
}

TEST_F(MoveEngineGestureTest, theThreadIsFreeDuringThePauses) {
    std::optional<bool> result;
    expectSuspends(move(), result);
    bool ran = false;
    loop.post([&] { ran = true; });
    loop.runUntilIdle();
    EXPECT_TRUE(ran);
    EXPECT_EQ(result, std::nullopt);
    loop.advance(gestureLength);
    EXPECT_EQ(result, true);
}

TEST_F(MoveEngineGestureTest, thePausesHaveTheirLengths) {
    EXPECT_EQ(MoveEngine::pauseAfterMouseDown, 0.150);
    EXPECT_EQ(MoveEngine::pauseAfterDragStep, 0.025);
    EXPECT_EQ(MoveEngine::pauseBeforeMouseUp, 0.100);
    EXPECT_EQ(MoveEngine::dragSteps, 12U);
    EXPECT_EQ(MoveEngine::commandFlag, 0x100000U);
}

TEST_F(MoveEngineGestureTest, everyEventCarriesExactlyTheCommandFlagAndTheOneSource) {
    expectCompletesWithin(1, move());
    for (const auto& event : poster.posted) {
        EXPECT_EQ(event.flags, 0x100000U);
        EXPECT_TRUE(event.hasSource);
    }
    EXPECT_EQ(poster.sourcesCreated, 1);
}

TEST_F(MoveEngineGestureTest, theSourceIsMadeFirstAndReleasedLast) {
    expectCompletesWithin(1, move());
    EXPECT_EQ(journal.calls().front(), "createSource");
    EXPECT_EQ(journal.calls().back(), "releaseSource");
}

TEST_F(MoveEngineGestureTest, aTargetUnderTheItemPlaysTheWholeGestureOnTheSpot) {
    EXPECT_EQ(expectCompletesWithin(1, move(1000)), true);
    EXPECT_EQ(types(), wholeGesture());
    for (const auto& event : poster.posted)
        EXPECT_EQ(event.position, (Point{1000, 12}));
}

TEST_F(MoveEngineGestureTest, aRefusedSourceLeavesTheEventsWithoutOne) {
    poster.refusesSource = true;
    EXPECT_EQ(expectCompletesWithin(1, move()), true);
    EXPECT_EQ(types(), wholeGesture());
    EXPECT_FALSE(poster.posted.front().hasSource);
}

TEST_F(MoveEngineGestureTest, aPressThatCannotBeMadeEndsTheMoveBeforeAnythingIsPosted) {
    poster.failingEvents = {1};
    EXPECT_EQ(expectCompletesWithoutSuspending(move()), false);
    EXPECT_TRUE(poster.posted.empty());
    EXPECT_EQ(poster.eventsCreated, 1);
    EXPECT_EQ(log.lines,
              std::vector<std::string>{"MoveEngine: failed to create CGEvent of type 1"});
    expectEverythingReleased();
}

TEST_F(MoveEngineGestureTest, aDragThatCannotBeMadeEndsTheMoveAtOnceWithoutARelease) {
    for (int failing = 2; failing <= 13; ++failing) {
        ScriptedEventPoster failingPoster{{}, &loop};
        ScriptedLog lines;
        failingPoster.failingEvents = {failing};
        const double begun = loop.elapsed();
        double ended = 0;
        const auto timed = [](Task<bool> task, VirtualLoop& clock, double& end) -> Task<bool> {
            const bool done = co_await std::move(task);
            end = clock.elapsed();
            co_return done;
        };
        EXPECT_EQ(expectCompletesWithin(
                      1, timed(MoveEngine::move(item, 700, failingPoster, lines), loop, ended)),
                  false);
        EXPECT_EQ(failingPoster.posted.size(), static_cast<std::size_t>(failing - 1));
        EXPECT_EQ(failingPoster.eventsCreated, failing) << "nothing is tried after the failure";
        EXPECT_NE(failingPoster.posted.back().type, MouseEventType::leftMouseUp);
        EXPECT_NEAR(ended - begun, 0.150 + (failing - 2) * 0.025, 1e-9);
        EXPECT_EQ(lines.lines,
                  std::vector<std::string>{"MoveEngine: failed to create CGEvent of type 6"});
        EXPECT_EQ(failingPoster.sourcesReleased, 1);
        EXPECT_FALSE(failingPoster.holdsButton) << "the source lets go of what it holds";
        EXPECT_FALSE(MoveEngine::isMoving());
    }
}

TEST_F(MoveEngineGestureTest, aReleaseThatCannotBeMadeIsLoggedAndTheSourceLetsGo) {
    poster.failingEvents = {14};
    EXPECT_EQ(expectCompletesWithin(1, move()), false);
    EXPECT_EQ(poster.posted.size(), 13U);
    EXPECT_EQ(log.lines,
              std::vector<std::string>{"MoveEngine: failed to create CGEvent of type 2"});
    expectEverythingReleased();
}

// Cancellation.

TEST_F(MoveEngineGestureTest, aCancelledMovePlaysTheRestOfTheGestureAtOnce) {
    for (const double when : {0.05, 0.16, 0.30, 0.50}) {
        ScriptedEventPoster own{{}, &loop};
        std::optional<bool> result;
        const double begun = loop.elapsed();
        const auto handle = expectSuspends(MoveEngine::move(item, 700, own, log), result);
        loop.advance(when);
        handle.cancel();
        loop.runUntilIdle();
        EXPECT_EQ(result, true) << "cancelled after " << when << " s";
        EXPECT_FALSE(handle.isRunning());
        ASSERT_EQ(own.posted.size(), 14U);
        EXPECT_NEAR(own.posted.back().at - begun, when, 1e-9);
        EXPECT_EQ(own.posted.back().type, MouseEventType::leftMouseUp);
        EXPECT_EQ(own.posted.back().position, (Point{700, 12}));
        EXPECT_EQ(own.sourcesReleased, 1);
    }
}

TEST_F(MoveEngineGestureTest, aMoveCancelledBeforeItBeganIsPlayedWholeAtOneInstant) {
    const auto task = [](Task<bool> gesture) -> Task<> { co_await std::move(gesture); };
    const auto handle = start(loop, task(move()));
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_EQ(types(), wholeGesture());
    EXPECT_EQ(loop.elapsed(), 0);
}

// One at a time.

TEST_F(MoveEngineGestureTest, aSecondMovePostsNothingWhileOneIsUnderWay) {
    std::optional<bool> first;
    expectSuspends(move(), first);
    EXPECT_TRUE(MoveEngine::isMoving());

    ScriptedEventPoster other{{}, &loop};
    ScriptedLog otherLog;
    EXPECT_EQ(expectCompletesWithoutSuspending(MoveEngine::move(item, 400, other, otherLog)),
              false);
    EXPECT_EQ(other.sourcesCreated, 0);
    EXPECT_EQ(other.eventsCreated, 0);
    EXPECT_TRUE(otherLog.lines.empty());

    loop.advance(gestureLength);
    EXPECT_EQ(first, true);
    EXPECT_EQ(types(), wholeGesture()) << "the first gesture does not notice";
}

TEST_F(MoveEngineGestureTest, theNextMoveMayBeginWhenOneHasEnded) {
    EXPECT_EQ(expectCompletesWithin(1, move()), true);
    EXPECT_FALSE(MoveEngine::isMoving());
    EXPECT_EQ(expectCompletesWithin(1, move(1200)), true);
    EXPECT_EQ(poster.posted.size(), 28U);
}

TEST_F(MoveEngineGestureTest, aMoveNobodyStartedIsNotUnderWay) {
    {
        const auto unused = move();
        EXPECT_FALSE(MoveEngine::isMoving());
    }
    EXPECT_EQ(poster.sourcesCreated, 0);
}

TEST_F(MoveEngineGestureTest, aLoopThatEndsInMidGestureLeavesNothingPressedAndNoMark) {
    {
        VirtualLoop ending;
        const auto task = [](Task<bool> gesture) -> Task<> { co_await std::move(gesture); };
        start(ending, task(move()));
        ending.advance(0.2);
        EXPECT_TRUE(MoveEngine::isMoving());
        EXPECT_TRUE(poster.holdsButton);
    }
    EXPECT_EQ(poster.sourcesReleased, 1);
    expectEverythingReleased();
}

} // namespace
} // namespace orrivane
