#include <Orrivane/MenuBarPreview.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace orrivane {
namespace {

constexpr NotchInfo notch{
    .screenWidth = 1512, .screenMinX = 0, .menuBarHeight = 37, .notchMinX = 660, .notchMaxX = 850};

std::vector<PreviewIcon> iconsOfWidths(const std::vector<double>& widths) {
    std::vector<PreviewIcon> icons;
    for (const double width : widths)
        icons.push_back(
            {.id = static_cast<std::uint32_t>(icons.size() + 1), .width = width, .image = {}});
    return icons;
}

std::vector<PreviewIcon> equalIcons(std::size_t count, double width) {
    return iconsOfWidths(std::vector<double>(count, width));
}

double totalWidth(const std::vector<LaidOutIcon>& laid) {
    double total = 0;
    for (const LaidOutIcon& icon : laid)
        total += icon.width;
    return total;
}

class ABitmap : public ImageBody {
  public:
    [[nodiscard]] int pixelWidth() const override { return 60; }
    [[nodiscard]] int pixelHeight() const override { return 74; }
};

TEST(MenuBarPreviewTest, withoutASmallerSpacingTheWidthsAreTheMeasuredOnes) {
    const auto icons = iconsOfWidths({30, 9.5, 41});
    for (const auto spacing : {std::optional<int>(), std::optional(16), std::optional(20),
                               std::optional(std::numeric_limits<int>::max())}) {
        const auto laid = MenuBarPreview::layout(notch, icons, spacing);
        ASSERT_EQ(laid.size(), 3U);
        EXPECT_EQ(laid[0].width, 30);
        EXPECT_EQ(laid[1].width, 9.5);
        EXPECT_EQ(laid[2].width, 41);
    }
}

TEST(MenuBarPreviewTest, atSpacingFourTenIconsShareALossOf72Points) {
    const auto laid = MenuBarPreview::layout(notch, equalIcons(10, 30), 4);
    for (const LaidOutIcon& icon : laid)
        EXPECT_NEAR(icon.width, 22.8, 1e-9);
    EXPECT_NEAR(totalWidth(laid), 300 - 72, 1e-9);
    EXPECT_NEAR(laid.front().x, 1512 - 228, 1e-9);
}

TEST(MenuBarPreviewTest, atSpacingFourTwoIconsStopAt14Points) {
    for (const LaidOutIcon& icon : MenuBarPreview::layout(notch, equalIcons(2, 30), 4))
        EXPECT_EQ(icon.width, 14);
}

TEST(MenuBarPreviewTest, atSpacing15TheRowLosesSixPoints) {
    EXPECT_EQ(totalWidth(MenuBarPreview::layout(notch, equalIcons(3, 30), 15)), 84);
}

TEST(MenuBarPreviewTest, anIconNarrowerThan14PointsGrowsToThemUnderASqueeze) {
    EXPECT_EQ(MenuBarPreview::layout(notch, iconsOfWidths({8}), 15)[0].width, 14);
}

TEST(MenuBarPreviewTest, theLowestSpacingThereIsStillStopsAt14Points) {
    const auto laid =
        MenuBarPreview::layout(notch, equalIcons(2, 30), std::numeric_limits<int>::min());
    EXPECT_EQ(totalWidth(laid), 28);
}

TEST(MenuBarPreviewTest, theRowIsPackedAgainstTheRightEdgeOfTheNotchedScreen) {
    NotchInfo secondScreen = notch;
    secondScreen.screenMinX = 1920;
    const auto laid = MenuBarPreview::layout(secondScreen, iconsOfWidths({20, 30, 40}), {});
    ASSERT_EQ(laid.size(), 3U);
    EXPECT_EQ(laid[0].x, 1920 + 1512 - 90);
    EXPECT_EQ(laid[1].x, laid[0].x + 20);
    EXPECT_EQ(laid[2].x, laid[1].x + 30);
}

TEST(MenuBarPreviewTest, theLayoutKeepsTheIconsAndTheirOrder) {
    auto icons = iconsOfWidths({20, 30, 40});
    icons[1].image = Image(std::make_shared<ABitmap>());
    const auto laid = MenuBarPreview::layout(notch, icons, 8);
    ASSERT_EQ(laid.size(), 3U);
    for (std::size_t i = 0; i < icons.size(); ++i)
        EXPECT_EQ(laid[i].icon, icons[i]);
}

TEST(MenuBarPreviewTest, anIconThatOnlyTouchesTheNotchIsNotEaten) {
    // From the right: up to the notch's right edge, the notch itself, from its left edge on.
    const auto icons = iconsOfWidths({25, 190, 1512 - 850});
    const auto laid = MenuBarPreview::layout(notch, icons, {});
    ASSERT_EQ(laid.size(), 3U);
    ASSERT_EQ(laid[0].x + laid[0].width, notch.notchMinX);
    ASSERT_EQ(laid[2].x, notch.notchMaxX);
    EXPECT_FALSE(laid[0].eaten);
    EXPECT_TRUE(laid[1].eaten);
    EXPECT_FALSE(laid[2].eaten);
}

TEST(MenuBarPreviewTest, anIconThatReachesUnderTheNotchByAnyAmountIsEaten) {
    const auto reachingLeft =
        MenuBarPreview::layout(notch, iconsOfWidths({25, 189.5, 1512 - 849.5}), {});
    EXPECT_FALSE(reachingLeft[0].eaten);
    EXPECT_TRUE(reachingLeft[2].eaten);
    const auto reachingRight =
        MenuBarPreview::layout(notch, iconsOfWidths({25, 189.5, 1512 - 850}), {});
    EXPECT_TRUE(reachingRight[0].eaten);
    EXPECT_FALSE(reachingRight[2].eaten);
}

TEST(MenuBarPreviewTest, withoutANotchTheRowStartsAtZeroAndNothingIsEaten) {
    const auto icons = iconsOfWidths({700, 100, 50});
    const auto laid = MenuBarPreview::layout(std::nullopt, icons, {});
    ASSERT_EQ(laid.size(), 3U);
    EXPECT_EQ(laid[0].x, 0);
    EXPECT_EQ(laid[2].x + laid[2].width, 850);
    for (const LaidOutIcon& icon : laid)
        EXPECT_FALSE(icon.eaten);
    EXPECT_EQ(MenuBarPreview::projectedEatenCount(std::nullopt, icons, {}), 0);
}

TEST(MenuBarPreviewTest, withoutANotchASqueezedRowStillFillsItsOwnSpan) {
    const auto laid = MenuBarPreview::layout(std::nullopt, equalIcons(10, 30), 4);
    EXPECT_NEAR(laid.front().x, 0, 1e-9);
    EXPECT_NEAR(laid.back().x + laid.back().width, 228, 1e-9);
}

TEST(MenuBarPreviewTest, aSmallerSpacingCanPushAnIconFromTheLeftOfTheNotchUnderIt) {
    // The first icon ends 10 points left of the notch; the squeeze takes 24 from the second one.
    const auto icons = iconsOfWidths({100, 1512 - 650});
    EXPECT_FALSE(MenuBarPreview::layout(notch, icons, {})[0].eaten);
    EXPECT_TRUE(MenuBarPreview::layout(notch, icons, 8)[0].eaten);
}

TEST(MenuBarPreviewTest, aTightenedIconEndsWhereItsOwnWidthEnds) {
    // Both lose 36 points: the first one now ends at 650, where its measured width would reach 686.
    const auto laid = MenuBarPreview::layout(notch, iconsOfWidths({100, 1512 - 650 + 36}), 4);
    ASSERT_EQ(laid[0].x + laid[0].width, 650);
    EXPECT_FALSE(laid[0].eaten);
}

TEST(MenuBarPreviewTest, anIconWithoutWidthIsEatenOnlyInsideTheNotch) {
    EXPECT_TRUE(MenuBarPreview::layout(notch, iconsOfWidths({0, 1512 - 700}), {})[0].eaten);
    EXPECT_FALSE(MenuBarPreview::layout(notch, iconsOfWidths({0, 1512 - 660}), {})[0].eaten);
    EXPECT_FALSE(MenuBarPreview::layout(notch, iconsOfWidths({0, 1512 - 850}), {})[0].eaten);
}

TEST(MenuBarPreviewTest, theProjectedCountIsTheNumberOfEatenIcons) {
    // 30 icons of 30 points begin at 612: those from 642 to 822 lie under the notch.
    EXPECT_EQ(MenuBarPreview::projectedEatenCount(notch, equalIcons(30, 30), {}), 7);
    EXPECT_EQ(MenuBarPreview::projectedEatenCount(notch, equalIcons(22, 30), {}), 0);
    EXPECT_EQ(MenuBarPreview::projectedEatenCount(notch, equalIcons(23, 30), {}), 1);
    EXPECT_EQ(MenuBarPreview::projectedEatenCount(notch, equalIcons(23, 30), 4), 0);
}

TEST(MenuBarPreviewTest, noIconsGiveAnEmptyLayoutAndACountOfZero) {
    for (const auto spacing : {std::optional<int>(), std::optional(4)}) {
        EXPECT_TRUE(MenuBarPreview::layout(notch, {}, spacing).empty());
        EXPECT_EQ(MenuBarPreview::projectedEatenCount(notch, {}, spacing), 0);
    }
}

} // namespace
} // namespace orrivane
