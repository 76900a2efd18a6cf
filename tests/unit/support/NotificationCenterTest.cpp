#include <Orrivane/support/NotificationCenter.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orrivane {
namespace {

TEST(NotificationCenterTest, deliversAtOnceInTheOrderOfRegistration) {
    NotificationCenter center;
    std::vector<int> calls;
    const auto first = center.addObserver("resized", [&](const UserInfo&) { calls.push_back(1); });
    const auto second = center.addObserver("resized", [&](const UserInfo&) { calls.push_back(2); });
    center.post("resized");
    EXPECT_EQ(calls, (std::vector{1, 2}));
}

TEST(NotificationCenterTest, anObserverHearsOnlyItsOwnNotification) {
    NotificationCenter center;
    int heard = 0;
    const auto observer = center.addObserver("resized", [&](const UserInfo&) { ++heard; });
    center.post("moved");
    center.post("resize");
    EXPECT_EQ(heard, 0);
    center.post("resized");
    EXPECT_EQ(heard, 1);
}

TEST(NotificationCenterTest, theFactsTravelWithTheNotification) {
    NotificationCenter center;
    UserInfo received;
    const auto observer =
        center.addObserver("resized", [&](const UserInfo& info) { received = info; });
    center.post("resized", {{"height", 620.5}, {"width", 980}});
    EXPECT_EQ(received, (UserInfo{{"height", 620.5}, {"width", 980}}));
    center.post("resized");
    EXPECT_TRUE(received.empty());
}

TEST(NotificationCenterTest, anObserverOfOneObjectHearsNobodyElse) {
    NotificationCenter center;
    const int one = 1;
    const int other = 2;
    std::vector<std::string> heard;
    const auto any =
        center.addObserver("resized", [&](const UserInfo&) { heard.emplace_back("any"); });
    const auto only =
        center.addObserver("resized", [&](const UserInfo&) { heard.emplace_back("one"); }, &one);
    center.post("resized");
    center.post("resized", {}, &other);
    EXPECT_EQ(heard, (std::vector<std::string>{"any", "any"}));
    center.post("resized", {}, &one);
    EXPECT_EQ(heard, (std::vector<std::string>{"any", "any", "any", "one"}));
}

TEST(NotificationCenterTest, anObserverWhoseRegistrationDiedHearsNothing) {
    NotificationCenter center;
    int heard = 0;
    auto observer = center.addObserver("resized", [&](const UserInfo&) { ++heard; });
    observer.reset();
    center.post("resized");
    EXPECT_EQ(heard, 0);
}

TEST(NotificationCenterTest, anObserverMayPostAnotherNotification) {
    NotificationCenter center;
    std::vector<std::string> heard;
    const auto inner =
        center.addObserver("inner", [&](const UserInfo&) { heard.emplace_back("inner"); });
    const auto outer = center.addObserver("outer", [&](const UserInfo&) {
        center.post("inner");
        heard.emplace_back("outer");
    });
    center.post("outer");
    EXPECT_EQ(heard, (std::vector<std::string>{"inner", "outer"}));
}

TEST(NotificationCenterTest, aRegistrationMayOutliveItsCentre) {
    auto center = std::make_unique<NotificationCenter>();
    auto observer = center->addObserver("resized", [](const UserInfo&) {});
    center.reset();
    observer.reset();
    EXPECT_FALSE(observer);
}

TEST(NotificationCenterTest, anObserverMayDestroyTheCentre) {
    auto center = std::make_unique<NotificationCenter>();
    int heard = 0;
    const auto first = center->addObserver("quit", [&](const UserInfo&) {
        ++heard;
        center.reset();
    });
    const auto second = center->addObserver("quit", [&](const UserInfo&) { ++heard; });
    center->post("quit");
    EXPECT_EQ(heard, 1);
}

TEST(NotificationCenterTest, theDefaultCentreIsOneAndTheSame) {
    int heard = 0;
    const auto observer = NotificationCenter::defaultCenter().addObserver(
        "resized", [&](const UserInfo&) { ++heard; });
    NotificationCenter::defaultCenter().post("resized");
    EXPECT_EQ(heard, 1);
}

} // namespace
} // namespace orrivane
