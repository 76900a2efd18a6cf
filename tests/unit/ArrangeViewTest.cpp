#include <Orrivane/ArrangeView.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace orrivane {
namespace {

/// Seven items, 100 to 106, with a point of air between them and no two of the same width.
std::vector<StatusItemWindow> menuBar() {
    std::vector<StatusItemWindow> items;
    double x = 900;
    for (std::uint32_t i = 0; i < 7; ++i) {
        const double width = 20 + 3.0 * i;
        items.push_back({.id = 100 + i, .frame = {{x, 0}, {width, 37}}});
        x += width + 1;
    }
    return items;
}

TEST(ArrangeViewTest, theLeftHalfOfATileMeansTheGapBeforeIt) {
    EXPECT_EQ(ArrangeView::gap(0, 30, 2), 2);
    EXPECT_EQ(ArrangeView::gap(14.99, 30, 2), 2);
    EXPECT_EQ(ArrangeView::gap(-3, 30, 0), 0);
}

TEST(ArrangeViewTest, theRightHalfOfATileMeansTheGapAfterItFromTheVeryMiddleOn) {
    EXPECT_EQ(ArrangeView::gap(15, 30, 2), 3);
    EXPECT_EQ(ArrangeView::gap(29, 30, 2), 3);
}

TEST(ArrangeViewTest, aTileOfNoWidthCountsAsItsRightHalf) {
    EXPECT_EQ(ArrangeView::gap(0, 0, 4), 5);
}

TEST(ArrangeViewTest, aPointerThatIsNowhereCountsAsTheRightHalf) {
    EXPECT_EQ(ArrangeView::gap(std::numeric_limits<double>::quiet_NaN(), 30, 2), 3);
}

TEST(ArrangeViewTest, aStepGoesToTheNextGapThatMovesTheTile) {
    EXPECT_EQ(ArrangeView::steppedGap(2, std::nullopt, -1, 5), 1);
    EXPECT_EQ(ArrangeView::steppedGap(2, std::nullopt, 1, 5), 4);
}

TEST(ArrangeViewTest, furtherStepsGoOnFromTheGapReached) {
    EXPECT_EQ(ArrangeView::steppedGap(2, 1, -1, 5), 0);
    EXPECT_EQ(ArrangeView::steppedGap(2, 4, 1, 5), 5);
    EXPECT_EQ(ArrangeView::steppedGap(0, 4, -1, 5), 3);
}

TEST(ArrangeViewTest, aStepBackLeavesTheTileWhereItWas) {
    EXPECT_EQ(ArrangeView::steppedGap(2, 1, 1, 5), 3);
    EXPECT_EQ(ArrangeView::steppedGap(2, 4, -1, 5), 2);
    EXPECT_EQ(ArrangeView::steppedGap(2, 3, -1, 5), 1);
    EXPECT_EQ(ArrangeView::steppedGap(2, 2, 1, 5), 4);
}

TEST(ArrangeViewTest, stepsEndAtTheEndsOfTheRow) {
    EXPECT_EQ(ArrangeView::steppedGap(0, std::nullopt, -1, 5), 0);
    EXPECT_EQ(ArrangeView::steppedGap(4, std::nullopt, 1, 5), 5);
    EXPECT_EQ(ArrangeView::steppedGap(2, 0, -1, 5), 0);
    EXPECT_EQ(ArrangeView::steppedGap(2, 5, 1, 5), 5);
    EXPECT_EQ(ArrangeView::steppedGap(0, std::nullopt, 1, 1), 1);
}

TEST(ArrangeViewTest, aTileDroppedWhereItIsMovesNothing) {
    const auto items = menuBar();
    EXPECT_EQ(ArrangeView::targetX(items, 103, 3), std::nullopt);
    EXPECT_EQ(ArrangeView::targetX(items, 103, 4), std::nullopt);
    EXPECT_EQ(ArrangeView::targetX(items, 100, 0), std::nullopt);
    EXPECT_EQ(ArrangeView::targetX(items, 106, 7), std::nullopt);
}

TEST(ArrangeViewTest, aTileDroppedInAGapGoesOnePointLeftOfTheItemRightOfIt) {
    const auto items = menuBar();
    EXPECT_EQ(ArrangeView::targetX(items, 103, 5), items[5].frame.minX() - 1);
    EXPECT_EQ(ArrangeView::targetX(items, 103, 2), items[2].frame.minX() - 1);
    EXPECT_EQ(ArrangeView::targetX(items, 103, 0), 899);
}

TEST(ArrangeViewTest, aTileDroppedAfterTheLastOneGoesOnePointRightOfIt) {
    const auto items = menuBar();
    EXPECT_EQ(ArrangeView::targetX(items, 103, 7), items[6].frame.maxX() + 1);
}

TEST(ArrangeViewTest, aGapBeyondTheLastOneCountsAsTheLast) {
    const auto items = menuBar();
    EXPECT_EQ(ArrangeView::targetX(items, 103, 8), items[6].frame.maxX() + 1);
    EXPECT_EQ(ArrangeView::targetX(items, 103, std::numeric_limits<int>::max()),
              items[6].frame.maxX() + 1);
}

TEST(ArrangeViewTest, theTargetIsMeasuredFromStandardisedFrames) {
    auto items = menuBar();
    items[5].frame = {{items[5].frame.maxX(), 0}, {-items[5].frame.width(), 37}};
    items[6].frame = {{items[6].frame.maxX(), 0}, {-items[6].frame.width(), 37}};
    EXPECT_EQ(ArrangeView::targetX(items, 103, 5), menuBar()[5].frame.minX() - 1);
    EXPECT_EQ(ArrangeView::targetX(items, 103, 7), menuBar()[6].frame.maxX() + 1);
}

TEST(ArrangeViewTest, aTileThatIsGoneFromTheMenuBarMovesNothing) {
    EXPECT_EQ(ArrangeView::targetX(menuBar(), 999, 5), std::nullopt);
    EXPECT_EQ(ArrangeView::targetX({}, 103, 0), std::nullopt);
}

TEST(ArrangeViewTest, aNegativeGapMovesNothing) {
    EXPECT_EQ(ArrangeView::targetX(menuBar(), 103, -1), std::nullopt);
    EXPECT_EQ(ArrangeView::targetX(menuBar(), 103, std::numeric_limits<int>::min()), std::nullopt);
}

} // namespace
} // namespace orrivane
