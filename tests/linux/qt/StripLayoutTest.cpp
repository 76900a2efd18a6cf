#include <linux/qt/StripLayout.h>

#include <gtest/gtest.h>

namespace orrivane {

namespace {

View button(std::uint32_t key, Size size) {
    View view;
    view.key = key;
    view.node = Button{ButtonStyle::plain, Drawing{size, {}}, {}, {}};
    return view;
}

View row(std::vector<View> children, double spacing = 0) {
    View view;
    view.node = HorizontalStack{spacing, Alignment::center, std::move(children)};
    return view;
}

std::vector<double> edges(const std::vector<LaidOutButton>& buttons) {
    std::vector<double> edges;
    for (const auto& each : buttons) {
        edges.push_back(each.left);
        edges.push_back(each.right);
    }
    return edges;
}

} // namespace

TEST(StripLayout, aRowWithoutSpacingSharesItsEdges) {
    const auto view = row({button(1, {22, 37}), button(2, {30.5, 37}), button(3, {18, 37})});
    EXPECT_EQ(edges(layOut(view, {70.5, 37})), (std::vector{0.0, 22.0, 22.0, 52.5, 52.5, 70.5}));
}

TEST(StripLayout, spacingLiesBetweenNeighboursOnly) {
    const auto view = row({button(1, {10, 37}), button(2, {10, 37})}, 4);
    EXPECT_EQ(edges(layOut(view, {24, 37})), (std::vector{0.0, 10.0, 14.0, 24.0}));
}

TEST(StripLayout, lowerButtonsAreCentredInTheRow) {
    const auto view = row({button(1, {10, 37}), button(2, {10, 17})});
    const auto buttons = layOut(view, {20, 37});
    ASSERT_EQ(buttons.size(), 2U);
    EXPECT_EQ(buttons[1].top, 10);
    EXPECT_EQ(buttons[1].bottom, 27);
}

TEST(StripLayout, theWholeIsCentredInThePanel) {
    const auto buttons = layOut(button(1, {10, 17}), {30, 37});
    ASSERT_EQ(buttons.size(), 1U);
    EXPECT_EQ(buttons[0].left, 10);
    EXPECT_EQ(buttons[0].top, 10);
}

TEST(StripLayout, rowsMayHoldRows) {
    const auto view =
        row({button(1, {10, 37}), row({button(2, {5, 37}), button(3, {6, 37})}, 1)}, 2);
    EXPECT_EQ(edges(layOut(view, {24, 37})), (std::vector{0.0, 10.0, 12.0, 17.0, 18.0, 24.0}));
}

TEST(StripLayout, aButtonIsKnownByItsKeyOrElseByItsPlace) {
    const auto view = row({button(7, {10, 37}), button(0, {10, 37}), button(0, {10, 37})});
    const auto buttons = layOut(view, {30, 37});
    ASSERT_EQ(buttons.size(), 3U);
    EXPECT_EQ(buttons[0].id, (CellId{7, 0}));
    EXPECT_NE(buttons[1].id, buttons[2].id);
    EXPECT_EQ(layOut(row({button(7, {10, 37})}), {10, 37})[0].id, buttons[0].id);
}

TEST(StripLayout, anEmptyRowHasNoButtons) {
    EXPECT_TRUE(layOut(row({}), {0, 37}).empty());
}

} // namespace orrivane
