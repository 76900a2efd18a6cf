#include <Orrivane/support/Awaiters.h>
#include <tests/support/CoroutineTest.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {
namespace {

using Reply = std::optional<int>;
using Replies = std::vector<Reply>;

constexpr double limit = 2; ///< seconds

class AnswerTest : public CoroutineTest {
  protected:
    /// Keeps the completion for the test to call.
    Answer<int>::Begin keep() {
        return [this](Completion<int> given) { completion = std::move(given); };
    }

    Replies replies;
    std::optional<Completion<int>> completion;
};

Task<> asking(Replies& replies, Answer<int>::Begin begin) {
    Answer<int> answer(std::move(begin), limit);
    replies.push_back(co_await answer);
}

TEST_F(AnswerTest, beginRunsAtOnceAndOnlyOnce) {
    int begun = 0;
    expectSuspends(asking(replies, [&](const Completion<int>& given) {
        ++begun;
        completion = given;
    }));
    EXPECT_EQ(begun, 1);
    loop.advance(limit);
    EXPECT_EQ(begun, 1);
}

TEST_F(AnswerTest, anAnswerGivenInsideBeginArrivesOnALaterTurn) {
    expectSuspends(asking(replies, [](const Completion<int>& given) { given(7); }));
    EXPECT_TRUE(replies.empty());
    loop.runUntilIdle();
    EXPECT_EQ(replies, Replies{7});
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(AnswerTest, anAnswerGivenLaterArrives) {
    expectSuspends(asking(replies, keep()));
    loop.advance(1);
    (*completion)(8);
    EXPECT_TRUE(replies.empty()) << "the task went on inside the call that answered";
    loop.runUntilIdle();
    EXPECT_EQ(replies, Replies{8});
    EXPECT_EQ(loop.elapsed(), 1);
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(AnswerTest, theFirstOfTwoAnswersCounts) {
    expectSuspends(asking(replies, keep()));
    (*completion)(1);
    (*completion)(2);
    loop.runUntilIdle();
    (*completion)(3);
    loop.runUntilIdle();
    EXPECT_EQ(replies, Replies{1});
}

TEST_F(AnswerTest, copiesShareTheOneAnswer) {
    expectSuspends(asking(replies, keep()));
    const auto copy = *completion;
    completion.reset();
    loop.runUntilIdle();
    EXPECT_TRUE(replies.empty()) << "one copy died, not the last";
    copy(4);
    loop.runUntilIdle();
    EXPECT_EQ(replies, Replies{4});
}

TEST_F(AnswerTest, aCompletionDroppedUnansweredLetsTheTaskGoOnWithoutAValue) {
    expectSuspends(asking(replies, keep()));
    loop.advance(1);
    completion.reset();
    loop.runUntilIdle();
    EXPECT_EQ(replies, Replies{std::nullopt});
    EXPECT_EQ(loop.elapsed(), 1);
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(AnswerTest, aCompletionDroppedInsideBeginDoesSoToo) {
    expectSuspends(asking(replies, [](const Completion<int>&) {}));
    loop.runUntilIdle();
    EXPECT_EQ(replies, Replies{std::nullopt});
}

TEST_F(AnswerTest, anAnswerThatDoesNotComeInTimeIsAbsent) {
    expectSuspends(asking(replies, keep()));
    loop.advance(limit - 0.01);
    EXPECT_TRUE(replies.empty());
    loop.advance(0.01);
    EXPECT_EQ(replies, Replies{std::nullopt});
}

TEST_F(AnswerTest, anAnswerAfterTheLimitIsIgnored) {
    expectSuspends(asking(replies, keep()));
    loop.advance(limit);
    (*completion)(9);
    completion.reset();
    loop.advance(limit);
    EXPECT_EQ(replies, Replies{std::nullopt});
}

TEST_F(AnswerTest, anAnswerAtTheLimitButBeforeTheTaskWentOnIsIgnored) {
    expectSuspends(asking(replies, keep()));
    const auto late = loop.wakeUp(limit, [&] { (*completion)(9); });
    loop.block(limit);
    loop.runUntilIdle();
    EXPECT_EQ(replies, Replies{std::nullopt});
}

TEST_F(AnswerTest, settingTheClockDoesNotMoveTheLimit) {
    expectSuspends(asking(replies, keep()));
    loop.setNow(loop.now() + 86400);
    loop.advance(limit - 0.01);
    EXPECT_TRUE(replies.empty());
    (*completion)(5);
    loop.runUntilIdle();
    EXPECT_EQ(replies, Replies{5});
}

TEST_F(AnswerTest, cancellingTheTaskDoesNotTakeTheAnswerAway) {
    const auto handle = expectSuspends(asking(replies, keep()));
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_TRUE(replies.empty());
    (*completion)(6);
    loop.runUntilIdle();
    EXPECT_EQ(replies, Replies{6});
}

TEST_F(AnswerTest, valuesThatCanOnlyBeMovedArrive) {
    const auto ask = []() -> Task<int> {
        Answer<std::unique_ptr<int>> answer(
            [](const Completion<std::unique_ptr<int>>& given) { given(std::make_unique<int>(3)); },
            limit);
        const auto value = co_await answer;
        co_return value ? **value : 0;
    };
    EXPECT_EQ(expectCompletesWithin(0, ask()), 3);
}

TEST_F(AnswerTest, whatBeginThrowsIsThrownToTheTaskOnce) {
    std::vector<std::string> errors;
    const auto guarded = [](std::vector<std::string>& seen, Answer<int>::Begin begin) -> Task<> {
        try {
            Answer<int> answer(std::move(begin), limit);
            co_await answer;
            seen.emplace_back("no error");
        } catch (const std::runtime_error& error) {
            seen.emplace_back(error.what());
        }
        co_await Sleep(1);
        seen.emplace_back("slept");
    };
    start(loop, guarded(errors, [](const Completion<int>&) { throw std::runtime_error("full"); }));
    loop.runUntilIdle();
    EXPECT_EQ(errors, std::vector<std::string>{"full"});
    loop.advance(1);
    EXPECT_EQ(errors, (std::vector<std::string>{"full", "slept"}));
}

TEST_F(AnswerTest, whatBeginThrowsAfterItAnsweredIsThrownToTheTaskOnce) {
    const auto failing = [](const Completion<int>& given) {
        given(1);
        throw std::runtime_error("too late");
    };
    start(loop, asking(replies, failing));
    EXPECT_THROW(loop.runUntilIdle(), std::runtime_error);
    loop.advance(limit);
    EXPECT_TRUE(replies.empty());
}

TEST_F(AnswerTest, whatBeginThrowsDoesNotWaitForACompletionThatIsStillHeld) {
    start(loop, asking(replies, [this](const Completion<int>& given) {
              completion = given;
              throw std::runtime_error("refused");
          }));
    EXPECT_THROW(loop.runUntilIdle(), std::runtime_error);
    (*completion)(1);
    loop.advance(limit);
    EXPECT_TRUE(replies.empty());
}

/// Counts its instances: a frame that is never destroyed leaves one behind.
struct Counted {
    explicit Counted(int& count)
        : living(count) {
        ++living;
    }
    Counted(const Counted& other)
        : living(other.living) {
        ++living;
    }
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --living; }
    int& living;
};

Task<> askingWith(Counted, Replies& replies, Answer<int>::Begin begin) {
    Answer<int> answer(std::move(begin), limit);
    replies.push_back(co_await answer);
}

TEST_F(AnswerTest, aLoopThatDiesWithTheCompletionTakesTheWaitingTaskAlong) {
    int living = 0;
    {
        VirtualLoop dying;
        start(dying, askingWith(Counted(living), replies, [&](const Completion<int>& given) {
                  dying.post([given] { given(1); });
              }));
        dying.runNewestPost();
        EXPECT_EQ(living, 1);
    }
    EXPECT_EQ(living, 0);
    EXPECT_TRUE(replies.empty());
}

TEST_F(AnswerTest, aLoopThatDiesWithAnAnswerOnItsWayTakesTheTaskAlong) {
    int living = 0;
    {
        VirtualLoop dying;
        start(dying,
              askingWith(Counted(living), replies, [](const Completion<int>& given) { given(1); }));
        dying.runNewestPost();
        EXPECT_EQ(living, 1);
    }
    EXPECT_EQ(living, 0);
    EXPECT_TRUE(replies.empty());
}

TEST_F(AnswerTest, aLoopThatDiesWithATimerThatHoldsTheCompletionTakesTheTaskAlong) {
    int living = 0;
    Subscription timer;
    {
        VirtualLoop dying;
        start(dying, askingWith(Counted(living), replies, [&](const Completion<int>& given) {
                  timer = dying.wakeUp(1, [given] { given(1); });
              }));
        dying.runUntilIdle();
        EXPECT_EQ(living, 1);
    }
    EXPECT_EQ(living, 0);
    timer.reset();
    EXPECT_TRUE(replies.empty());
}

} // namespace
} // namespace orrivane
