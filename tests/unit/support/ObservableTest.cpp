#include <Orrivane/support/Observable.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace orrivane {
namespace {

struct Model : ObservableObject {
    Published<int> count{*this, 1};
    Published<std::string> name{*this, "first"};
};

TEST(ObservableTest, aFieldBeginsWithItsInitialValueAndNoAnnouncement) {
    Model model;
    int announced = 0;
    const auto observer = model.observe([&] { ++announced; });
    EXPECT_EQ(model.count.get(), 1);
    EXPECT_EQ(model.name.get(), "first");
    EXPECT_EQ(announced, 0);
}

TEST(ObservableTest, anAssignmentIsAnnouncedBeforeItHappens) {
    Model model;
    std::vector<int> seen;
    const auto observer = model.observe([&] { seen.push_back(model.count); });
    model.count = 5;
    EXPECT_EQ(seen, std::vector{1});
    EXPECT_EQ(model.count, 5);
}

TEST(ObservableTest, anAssignmentOfAnEqualValueIsAnnouncedToo) {
    Model model;
    int announced = 0;
    const auto observer = model.observe([&] { ++announced; });
    model.count = 1;
    model.count = 1;
    EXPECT_EQ(announced, 2);
    EXPECT_EQ(model.count, 1);
}

TEST(ObservableTest, everyFieldAnnouncesThroughItsOwner) {
    Model model;
    int announced = 0;
    const auto observer = model.observe([&] { ++announced; });
    model.count = 2;
    model.name = "second";
    EXPECT_EQ(announced, 2);
    EXPECT_EQ(model.name.get(), "second");
}

TEST(ObservableTest, aModelCanAnnounceWhatNoFieldHolds) {
    Model model;
    int announced = 0;
    const auto observer = model.observe([&] { ++announced; });
    model.announceChange();
    EXPECT_EQ(announced, 1);
}

TEST(ObservableTest, anObserverThatWentAwayIsNotTold) {
    Model model;
    int announced = 0;
    auto observer = model.observe([&] { ++announced; });
    observer.reset();
    model.count = 2;
    EXPECT_EQ(announced, 0);
}

TEST(ObservableTest, anObserverMayAssignAnotherField) {
    Model model;
    bool reacting = false;
    const auto observer = model.observe([&] {
        if (!std::exchange(reacting, true))
            model.name = "reaction";
    });
    model.count = 3;
    EXPECT_EQ(model.count, 3);
    EXPECT_EQ(model.name.get(), "reaction");
}

} // namespace
} // namespace orrivane
