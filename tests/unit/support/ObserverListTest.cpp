#include <Orrivane/support/ObserverList.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {
namespace {

using Calls = std::vector<std::string>;

class ObserverListTest : public ::testing::Test {
  protected:
    Subscription observe(const std::string& name) {
        return list.add([this, name] { calls.push_back(name); });
    }

    ObserverList<> list;
    Calls calls;
};

TEST_F(ObserverListTest, callsObserversInTheOrderOfTheirRegistration) {
    const auto a = observe("a");
    const auto b = observe("b");
    const auto c = observe("c");
    list.notify();
    EXPECT_EQ(calls, (Calls{"a", "b", "c"}));
}

TEST_F(ObserverListTest, handsTheArgumentsToEveryObserver) {
    ObserverList<int, std::string> typed;
    Calls seen;
    const auto note = [&](int number, const std::string& text) {
        seen.push_back(text + std::to_string(number));
    };
    const auto first = typed.add(note);
    const auto second = typed.add(note);
    typed.notify(7, "n");
    EXPECT_EQ(seen, (Calls{"n7", "n7"}));
}

TEST_F(ObserverListTest, anObserverWhoseSubscriptionDiedIsNotCalled) {
    const auto a = observe("a");
    {
        const auto b = observe("b");
    }
    list.notify();
    EXPECT_EQ(calls, Calls{"a"});
    EXPECT_EQ(list.count(), 1U);
}

TEST_F(ObserverListTest, anObserverMayRemoveItself) {
    Subscription self;
    self = list.add([&] {
        calls.emplace_back("once");
        self.reset();
    });
    const auto after = observe("after");
    list.notify();
    list.notify();
    EXPECT_EQ(calls, (Calls{"once", "after", "after"}));
}

TEST_F(ObserverListTest, whatAnObserverHoldsSurvivesItsOwnRemovalUntilTheCallEnds) {
    Subscription self;
    std::weak_ptr<std::string> watched;
    self = list.add([this, &self, copy = std::make_shared<std::string>("mine"), &watched] {
        watched = copy;
        self.reset();
        calls.push_back(*copy);
    });
    list.notify();
    EXPECT_EQ(calls, Calls{"mine"});
    EXPECT_TRUE(watched.expired());
}

TEST_F(ObserverListTest, oneRemovedDuringARoundIsNotCalledInIt) {
    Subscription later;
    const auto first = list.add([&] {
        calls.emplace_back("first");
        later.reset();
    });
    later = observe("later");
    const auto last = observe("last");
    list.notify();
    EXPECT_EQ(calls, (Calls{"first", "last"}));
}

TEST_F(ObserverListTest, oneAddedDuringARoundIsFirstCalledInTheNext) {
    Subscription added;
    const auto first = list.add([&] {
        calls.emplace_back("first");
        if (!added)
            added = observe("added");
    });
    list.notify();
    EXPECT_EQ(calls, Calls{"first"});
    list.notify();
    EXPECT_EQ(calls, (Calls{"first", "first", "added"}));
}

TEST_F(ObserverListTest, anObserverMayDestroyTheListAndNobodyIsCalledAfterIt) {
    auto own = std::make_unique<ObserverList<>>();
    const auto first = own->add([&] {
        calls.emplace_back("first");
        own.reset();
    });
    const auto second = own->add([&] { calls.emplace_back("second"); });
    own->notify();
    EXPECT_EQ(calls, Calls{"first"});
}

TEST_F(ObserverListTest, anObserverMayStartAnotherRound) {
    bool nested = false;
    const auto first = list.add([&] {
        calls.emplace_back("first");
        if (!std::exchange(nested, true))
            list.notify();
    });
    const auto second = observe("second");
    list.notify();
    EXPECT_EQ(calls, (Calls{"first", "first", "second", "second"}));
}

TEST_F(ObserverListTest, aSubscriptionMayOutliveTheList) {
    auto own = std::make_unique<ObserverList<>>();
    auto subscription = own->add([] {});
    own.reset();
    subscription.reset();
    EXPECT_FALSE(subscription);
}

TEST_F(ObserverListTest, anObserverThatHoldsAnothersSubscriptionTakesItAlong) {
    auto held = std::make_shared<Subscription>(observe("held"));
    auto holder = list.add([held] {});
    held.reset();
    const auto other = observe("other");
    EXPECT_EQ(list.count(), 3U);
    holder.reset();
    EXPECT_EQ(list.count(), 1U);
    list.notify();
    EXPECT_EQ(calls, Calls{"other"});
}

TEST_F(ObserverListTest, anErrorEndsTheRoundAndLeavesTheListUsable) {
    bool fails = true;
    const auto first = list.add([&] {
        if (fails)
            throw std::runtime_error("refused");
    });
    const auto second = observe("second");
    EXPECT_THROW(list.notify(), std::runtime_error);
    fails = false;
    list.notify();
    EXPECT_EQ(calls, Calls{"second"});
}

} // namespace
} // namespace orrivane
