#include <Orrivane/MenuBarPreview.h>

#include <tests/support/ScriptedImage.h>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

/// A screen whose right end is at 1612, with its notch 112 points left of that.
constexpr NotchInfo notch{.screenWidth = 1512,
                          .screenMinX = 100,
                          .menuBarHeight = 37,
                          .notchMinX = 1400,
                          .notchMaxX = 1500};
constexpr Size half{756, 34}; // half a point of view for a point of bar

PreviewIcon icon(std::uint32_t id, double width, std::optional<Image> image = std::nullopt) {
    return {id, width, std::move(image)};
}

std::vector<Primitive> bar(double width, double top = 5) {
    const Rect rect{{0, top}, {width, 24}};
    return {BarMaterial{rect, 6, CornerStyle::continuous},
            RoundedRectangle{rect, 6, CornerStyle::continuous, ColorRole::secondary, 0.25, 0.5}};
}

void addPlaceholder(std::vector<Primitive>& primitives, const Rect& rect) {
    primitives.emplace_back(
        RoundedRectangle{rect, 3, CornerStyle::continuous, ColorRole::secondary, 0.25});
    primitives.emplace_back(DrawnText{rect, "?", 8, FontWeight::medium, ColorRole::secondary, 0.3});
}

RoundedRectangle redBorder(const Rect& rect) {
    return {rect, 3, CornerStyle::continuous, ColorRole::red, 1, 1};
}

TEST(MenuBarPreviewDrawing, bodyIsACanvasOf34PointsAsWideAsThePlace) {
    const MenuBarPreview preview{notch, {icon(1, 30)}, 8};
    const auto body = preview.body();
    const auto& canvas = std::get<Canvas>(body.node);
    EXPECT_EQ(canvas.width, std::nullopt);
    EXPECT_EQ(canvas.height, 34);
    EXPECT_EQ(canvas.content.drawing(half), preview.drawing(half));
    EXPECT_EQ(body.accessibilityName, "");
}

TEST(MenuBarPreviewDrawing, bodiesDifferWithWhatTheyShow) {
    const MenuBarPreview preview{notch, {icon(1, 30)}, 8};
    EXPECT_EQ(preview.body(), (MenuBarPreview{notch, {icon(1, 30)}, 8}.body()));
    EXPECT_NE(preview.body(), (MenuBarPreview{notch, {icon(1, 30)}, 9}.body()));
    EXPECT_NE(preview.body(), (MenuBarPreview{notch, {icon(1, 31)}, 8}.body()));
    EXPECT_NE(preview.body(), (MenuBarPreview{std::nullopt, {icon(1, 30)}, 8}.body()));
}

TEST(MenuBarPreviewDrawing, visibleIconsAreDrawnBeforeTheNotchAndEatenOnesAfterIt) {
    const auto image = ScriptedImage::make(80, 74);
    // From the right: 3 touches the notch, 2 lies under it, 1 touches it on the other side.
    const MenuBarPreview preview{
        notch, {icon(1, 50), icon(4, 60), icon(2, 40, image), icon(3, 112)}, std::nullopt};
    auto expected = bar(756);
    addPlaceholder(expected, {{625, 9}, {25, 16}});
    addPlaceholder(expected, {{700, 9}, {56, 16}});
    expected.emplace_back(
        RoundedRectangle{{{650, 6}, {50, 22}}, 4, CornerStyle::continuous, ColorRole::black});
    expected.emplace_back(Group{0.55, 2});
    addPlaceholder(expected, {{650, 9}, {30, 16}});
    expected.emplace_back(redBorder({{650, 9}, {30, 16}}));
    expected.emplace_back(Group{0.55, 1});
    expected.emplace_back(DrawnImage{{{680, 9}, {20, 16}}, image, 2, ContentMode::fit});
    expected.emplace_back(redBorder({{680, 9}, {20, 16}}));
    EXPECT_EQ(preview.drawing(half), (Drawing{half, expected}));
}

TEST(MenuBarPreviewDrawing, aVisibleIconWithAnImageIsThatImageAlone) {
    const auto image = ScriptedImage::make(60, 74);
    auto expected = bar(756);
    expected.emplace_back(DrawnImage{{{741, 9}, {15, 16}}, image, 2, ContentMode::fit});
    expected.emplace_back(
        RoundedRectangle{{{650, 6}, {50, 22}}, 4, CornerStyle::continuous, ColorRole::black});
    EXPECT_EQ((MenuBarPreview{notch, {icon(1, 30, image)}, std::nullopt}.drawing(half).primitives),
              expected);
}

TEST(MenuBarPreviewDrawing, anEatenTileNarrowerThan16IsSquareInsideAFullHighBorder) {
    const MenuBarPreview preview{notch, {icon(1, 20), icon(2, 112)}, std::nullopt};
    const auto primitives = preview.drawing(half).primitives;
    EXPECT_EQ(std::get<RoundedRectangle>(primitives.at(6)).rect, (Rect{{690, 12}, {10, 10}}));
    EXPECT_EQ(std::get<DrawnText>(primitives.at(7)).rect, (Rect{{690, 12}, {10, 10}}));
    EXPECT_EQ(std::get<RoundedRectangle>(primitives.at(8)), redBorder({{690, 9}, {10, 16}}));
}

TEST(MenuBarPreviewDrawing, aTileIsNeverNarrowerThanAPointAndStaysOnItsCentre) {
    const MenuBarPreview preview{NotchInfo{.screenWidth = 7560}, {icon(1, 4)}, std::nullopt};
    const auto primitives = preview.drawing(half).primitives;
    const auto& rect = std::get<RoundedRectangle>(primitives.at(2)).rect;
    EXPECT_EQ(rect.width(), 1);
    EXPECT_EQ(rect.height(), 1);
    EXPECT_DOUBLE_EQ(rect.midX(), 755.8);
}

TEST(MenuBarPreviewDrawing, withoutANotchTheRowFillsTheWidthAndNothingIsMarked) {
    const MenuBarPreview preview{
        std::nullopt, {icon(1, 30), icon(2, 20), icon(3, 50)}, std::nullopt};
    auto expected = bar(200);
    addPlaceholder(expected, {{0, 9}, {60, 16}});
    addPlaceholder(expected, {{60, 9}, {40, 16}});
    addPlaceholder(expected, {{100, 9}, {100, 16}});
    EXPECT_EQ((preview.drawing({200, 34}).primitives), expected);
}

TEST(MenuBarPreviewDrawing, withoutANotchATightenedRowFillsTheWidthToo) {
    // 30 points less each: 60 and 40 are left, and twice that is as wide as the place.
    const MenuBarPreview preview{std::nullopt, {icon(1, 90), icon(2, 70)}, 6};
    auto expected = bar(200);
    addPlaceholder(expected, {{0, 9}, {120, 16}});
    addPlaceholder(expected, {{120, 9}, {80, 16}});
    EXPECT_EQ((preview.drawing({200, 34}).primitives), expected);
}

TEST(MenuBarPreviewDrawing, withoutIconsBarAndNotchAreStillThere) {
    auto expected = bar(756);
    EXPECT_EQ((MenuBarPreview{}.drawing(half).primitives), expected);
    expected.emplace_back(
        RoundedRectangle{{{650, 6}, {50, 22}}, 4, CornerStyle::continuous, ColorRole::black});
    EXPECT_EQ((MenuBarPreview{notch, {}, std::nullopt}.drawing(half).primitives), expected);
}

TEST(MenuBarPreviewDrawing, aSpanOfNoPointsIsDrawnAsOne) {
    const MenuBarPreview preview{std::nullopt, {icon(1, 0.25)}, std::nullopt};
    const auto primitives = preview.drawing({100, 34}).primitives;
    EXPECT_EQ(std::get<RoundedRectangle>(primitives.at(2)).rect, (Rect{{0, 9}, {25, 16}}));
}

TEST(MenuBarPreviewDrawing, aNotchOfNegativeWidthHasNone) {
    auto inverted = notch;
    inverted.notchMinX = 1500;
    inverted.notchMaxX = 1400;
    const auto primitives = MenuBarPreview{inverted, {}, std::nullopt}.drawing(half).primitives;
    EXPECT_EQ(std::get<RoundedRectangle>(primitives.at(2)).rect, (Rect{{675, 6}, {0, 22}}));
}

TEST(MenuBarPreviewDrawing, aTighterSpacingIsDrawnAsItsLayoutSays) {
    const MenuBarPreview preview{notch, {icon(1, 50), icon(2, 150)}, 4};
    const auto laid = MenuBarPreview::layout(notch, preview.icons, 4);
    const auto primitives = preview.drawing(half).primitives;
    // 36 points less each: the second covers the notch's right end.
    EXPECT_EQ(laid[1].width, 114);
    EXPECT_TRUE(laid[1].eaten);
    EXPECT_EQ(std::get<RoundedRectangle>(primitives.back()), redBorder({{699, 9}, {57, 16}}));
}

TEST(MenuBarPreviewDrawing, everythingIsCentredInAnyHeight) {
    const auto primitives =
        MenuBarPreview{notch, {icon(1, 112)}, std::nullopt}.drawing({756, 60}).primitives;
    EXPECT_EQ(std::get<BarMaterial>(primitives.at(0)).rect, (Rect{{0, 18}, {756, 24}}));
    EXPECT_EQ(std::get<RoundedRectangle>(primitives.at(2)).rect, (Rect{{700, 22}, {56, 16}}));
    EXPECT_EQ(std::get<DrawnText>(primitives.at(3)).rect, (Rect{{700, 22}, {56, 16}}));
    EXPECT_EQ(std::get<RoundedRectangle>(primitives.at(4)).rect, (Rect{{650, 19}, {50, 22}}));
}

} // namespace
} // namespace orrivane
