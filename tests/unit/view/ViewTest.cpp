#include <Orrivane/view/View.h>

#include <gtest/gtest.h>

#include <memory>

namespace orrivane {
namespace {

View text(const std::string& words) {
    return {.node = Text{words}};
}

struct Square {
    double side = 1;
    [[nodiscard]] Drawing drawing(Size size) const {
        return {size, {Oval{{{}, {side, side}}, ColorRole::red}}};
    }
    friend bool operator==(const Square&, const Square&) = default;
};
struct OtherSquare : Square {
    friend bool operator==(const OtherSquare&, const OtherSquare&) = default;
};

/// Two views of the same container that differ only in a child.
template <typename Container>
void expectChildrenCount() {
    Container one;
    Container same;
    Container other;
    one.children = {text("a"), text("b")};
    same.children = {text("a"), text("b")};
    other.children = {text("a"), text("c")};
    EXPECT_EQ(View{.node = one}, View{.node = same});
    EXPECT_NE(View{.node = one}, View{.node = other});
    other.children.pop_back();
    EXPECT_NE(View{.node = one}, View{.node = other});
}

/// Two views of the same container that differ only as `change` makes them.
template <typename Container, typename Change>
void expectTells(Change change) {
    const Container one;
    Container other;
    change(other);
    EXPECT_NE(View{.node = one}, View{.node = other});
}

TEST(View, everyContainerIsToldApartByItsChildren) {
    expectChildrenCount<HorizontalStack>();
    expectChildrenCount<VerticalStack>();
    expectChildrenCount<Overlay>();
    expectChildrenCount<GroupBox>();
    expectChildrenCount<Disclosure>();
    expectChildrenCount<VerticalScroll>();
    expectChildrenCount<HorizontalScroll>();
}

TEST(View, everyContainerIsToldApartByItsOwnFields) {
    const auto widen = [](auto& container) { container.spacing = 5; };
    const auto turn = [](auto& container) { container.alignment = Alignment::bottom; };
    expectTells<HorizontalStack>(widen);
    expectTells<HorizontalStack>(turn);
    expectTells<VerticalStack>(widen);
    expectTells<VerticalStack>(turn);
    expectTells<Overlay>(turn);
    expectTells<GroupBox>(widen);
    expectTells<GroupBox>([](auto& box) { box.title = "Now"; });
    expectTells<Disclosure>([](auto& disclosure) { disclosure.label = "Show"; });
    expectTells<Disclosure>([](auto& disclosure) { disclosure.isExpanded = true; });
    expectTells<VerticalScroll>(widen);
    expectTells<HorizontalScroll>(widen);
}

TEST(View, actionsOfEveryKindMakeNoDifference) {
    EXPECT_EQ((Switch{"a", true, {[](bool) {}}}), (Switch{"a", true, {}}));
    EXPECT_EQ((DropTarget{{[](double) {}}, {[] {}}, {[] { return true; }}}), DropTarget{});
    VerticalScroll heard;
    heard.contentHeightChanged = {[](double) {}};
    EXPECT_EQ(View{.node = heard}, View{.node = VerticalScroll{}});
    View appearing = text("a");
    appearing.appeared = {[] {}};
    EXPECT_EQ(appearing, text("a"));
}

TEST(View, everyModifierMakesADifference) {
    const auto tells = [](auto change) {
        View changed = text("a");
        change(changed);
        return changed != text("a");
    };
    EXPECT_TRUE(tells([](View& view) { view.font = FontRole::title; }));
    EXPECT_TRUE(tells([](View& view) { view.weight = FontWeight::medium; }));
    EXPECT_TRUE(tells([](View& view) { view.color = ColorRole::red; }));
    EXPECT_TRUE(tells([](View& view) { view.isEnabled = false; }));
    EXPECT_TRUE(tells([](View& view) { view.isVisible = false; }));
    EXPECT_TRUE(tells([](View& view) { view.opacity = 0.5; }));
    EXPECT_TRUE(tells([](View& view) { view.frame.height = 3; }));
    EXPECT_TRUE(tells([](View& view) { view.padding.top = 3; }));
    EXPECT_TRUE(tells([](View& view) { view.background = Background{}; }));
    EXPECT_TRUE(tells([](View& view) { view.tooltip = "tip"; }));
    EXPECT_TRUE(tells([](View& view) { view.accessibilityName = "name"; }));
    EXPECT_TRUE(tells([](View& view) { view.key = 3; }));
}

TEST(View, aCanvasIsEqualWhenItsValueIsAndOfTheSameType) {
    EXPECT_EQ(CanvasContent(Square{2}), CanvasContent(Square{2}));
    EXPECT_NE(CanvasContent(Square{2}), CanvasContent(Square{3}));
    EXPECT_NE(CanvasContent(Square{2}), CanvasContent(OtherSquare{{2}}));
}

TEST(View, aCanvasDrawsItsValueAtTheSizeAskedFor) {
    const Canvas canvas{CanvasContent(Square{2}), std::nullopt, 30};
    EXPECT_EQ(canvas.content.drawing({40, 30}),
              (Drawing{{40, 30}, {Oval{{{0, 0}, {2, 2}}, ColorRole::red}}}));
}

TEST(View, aWeakActionRunsOnItsOwnerAndDoesNothingWithoutIt) {
    auto owner = std::make_shared<int>(1);
    const auto add = weakly(std::weak_ptr(owner), [](int& value, int more) { value += more; });
    const auto address = owner.get();
    add(4);
    EXPECT_EQ(*address, 5);
    owner.reset();
    add(4);
    EXPECT_EQ(owner, nullptr);
}

} // namespace
} // namespace orrivane
