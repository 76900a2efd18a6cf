#include <Orrivane/support/Subscription.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>

namespace orrivane {
namespace {

TEST(SubscriptionTest, removesOnceWhenItDies) {
    int removals = 0;
    {
        const Subscription subscription([&] { ++removals; });
        EXPECT_TRUE(subscription);
        EXPECT_EQ(removals, 0);
    }
    EXPECT_EQ(removals, 1);
}

TEST(SubscriptionTest, anEmptyOneRemovesNothing) {
    Subscription subscription;
    EXPECT_FALSE(subscription);
    subscription.reset();
    EXPECT_FALSE(subscription);
}

TEST(SubscriptionTest, resetRemovesAtOnceAndOnlyOnce) {
    int removals = 0;
    Subscription subscription([&] { ++removals; });
    subscription.reset();
    EXPECT_FALSE(subscription);
    subscription.reset();
    EXPECT_EQ(removals, 1);
}

TEST(SubscriptionTest, movingHandsTheRegistrationOver) {
    int removals = 0;
    Subscription first([&] { ++removals; });
    {
        const Subscription second(std::move(first));
        EXPECT_TRUE(second);
        EXPECT_EQ(removals, 0);
    }
    EXPECT_EQ(removals, 1);
}

TEST(SubscriptionTest, assigningRemovesTheOldRegistrationAndKeepsTheNewOne) {
    int oldRemovals = 0;
    int newRemovals = 0;
    {
        Subscription subscription([&] { ++oldRemovals; });
        subscription = Subscription([&] { ++newRemovals; });
        EXPECT_EQ(oldRemovals, 1);
        EXPECT_EQ(newRemovals, 0);
    }
    EXPECT_EQ(oldRemovals, 1);
    EXPECT_EQ(newRemovals, 1);
}

TEST(SubscriptionTest, assigningItToItselfKeepsTheRegistration) {
    int removals = 0;
    Subscription subscription([&] { ++removals; });
    auto& same = subscription;
    subscription = std::move(same);
    EXPECT_TRUE(subscription);
    EXPECT_EQ(removals, 0);
}

TEST(SubscriptionTest, removingMayDestroyTheSubscriptionItself) {
    auto subscription = std::make_unique<std::optional<Subscription>>();
    int removals = 0;
    subscription->emplace([&] {
        ++removals;
        subscription->reset();
    });
    (*subscription)->reset();
    EXPECT_EQ(removals, 1);
    EXPECT_FALSE(subscription->has_value());
}

} // namespace
} // namespace orrivane
