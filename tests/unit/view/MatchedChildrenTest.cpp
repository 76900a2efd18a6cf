#include <Orrivane/view/MatchedChildren.h>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

struct Child {
    std::uint32_t key = 0;
    std::size_t kind = 0;
    int number = 0;

    bool accepts(const View& view) const { return view.key == key && view.node.index() == kind; }
};

View keyed(std::uint32_t key) {
    return {.key = key, .node = Tile{}};
}
View text() {
    return {.node = Text{}};
}
View label() {
    return {.node = Label{}};
}

class MatchedChildren : public testing::Test {
  protected:
    std::vector<int> show(const std::vector<View>& next) {
        children_ = matchedChildren(std::move(children_), next, [&](const View& view) {
            return std::make_unique<Child>(Child{view.key, view.node.index(), ++made_});
        });
        std::vector<int> numbers;
        for (const auto& child : children_)
            numbers.push_back(child->number);
        return numbers;
    }
    std::vector<std::unique_ptr<Child>> children_;
    int made_ = 0;
};

TEST_F(MatchedChildren, theSameViewsKeepTheirChildren) {
    const std::vector views{text(), keyed(7), label()};
    EXPECT_EQ(show(views), (std::vector{1, 2, 3}));
    EXPECT_EQ(show(views), (std::vector{1, 2, 3}));
}

TEST_F(MatchedChildren, aKeyFindsItsChildWhereverItIs) {
    show({keyed(1), keyed(2), keyed(3)});
    EXPECT_EQ(show({keyed(3), keyed(9), keyed(1)}), (std::vector{3, 4, 1}));
    EXPECT_EQ(show({keyed(2)}), (std::vector{5})) << "it had gone with the views before";
}

TEST_F(MatchedChildren, withoutAKeyOnlyThePlaceCounts) {
    show({text(), label()});
    EXPECT_EQ(show({label(), text()}), (std::vector{3, 4}));
}

TEST_F(MatchedChildren, twoViewsWithOneKeyDoNotShareAChild) {
    show({keyed(5)});
    EXPECT_EQ(show({keyed(5), keyed(5)}), (std::vector{1, 2}));
}

TEST_F(MatchedChildren, whatServesNobodyGoes) {
    show({text(), text()});
    EXPECT_TRUE(show({}).empty());
    EXPECT_TRUE(children_.empty());
}

} // namespace
} // namespace orrivane
