#import <macos/view/DrawingRenderer.h>

#import "support/Raster.h"

#include <Orrivane/MenuBarIcon.h>
#include <macos/view/ImageHandle.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>

namespace orrivane {
namespace {

constexpr int solid = 250; // of 255; what lies wholly inside a figure
constexpr int clear = 5;

Raster drawn(const Drawing& drawing, int scale) {
    NSImage* image = drawnImage(drawing, scale);
    return Raster([image CGImageForProposedRect:nullptr context:nil hints:nil]);
}

RoundedRectangle black(const Rect& rect) {
    return {.rect = rect, .fill = ColorRole::black};
}

class MenuBarIconOnAMac : public testing::TestWithParam<int> {
  protected:
    NSImage* image = drawnTemplateImage(MenuBarIcon::image());
};

TEST_P(MenuBarIconOnAMac, headTrunkAndLegsAreCoveredAndWhatIsAroundThemIsClear) {
    const int scale = GetParam();
    const Raster raster(image, scale);
    ASSERT_EQ(raster.width(), 22U * static_cast<unsigned>(scale));
    ASSERT_EQ(raster.height(), 18U * static_cast<unsigned>(scale));
    const auto coverage = [&](double x, double y) {
        return raster.coverage(static_cast<std::size_t>(x * scale),
                               static_cast<std::size_t>(y * scale));
    };
    EXPECT_GE(coverage(9.5, 2.5), solid) << "head";
    EXPECT_GE(coverage(9.5, 7.5), solid) << "trunk";
    EXPECT_GE(coverage(16.5, 14.5), solid) << "right leg";
    EXPECT_LE(coverage(9.5, 15.5), clear) << "between the legs";
    EXPECT_LE(coverage(0.5, 0.5), clear) << "top left";
    EXPECT_LE(coverage(20.5, 2.5), clear) << "top right";
    EXPECT_LE(coverage(0.5, 16.5), clear) << "bottom left";
}

INSTANTIATE_TEST_SUITE_P(PixelsAPoint, MenuBarIconOnAMac, testing::Values(1, 2));

TEST(DrawingRenderer, theStatusItemsImageIsATemplateOfItsDrawingsSizeAndName) {
    NSImage* image = drawnTemplateImage(MenuBarIcon::image());
    EXPECT_TRUE([image isTemplate]);
    EXPECT_EQ(image.size.width, 22);
    EXPECT_EQ(image.size.height, 18);
    EXPECT_STREQ(image.accessibilityDescription.UTF8String, "Orrivane");
}

TEST(DrawingRenderer, theSameFigureIsDrawnAtEveryScale) {
    NSImage* image = drawnTemplateImage(MenuBarIcon::image());
    const double once = Raster(image, 1).totalCoverage();
    ASSERT_GT(once, 20); // points
    EXPECT_NEAR(Raster(image, 2).totalCoverage() / 4, once, once / 20);
}

TEST(DrawingRenderer, aBitmapHasThePixelsOfItsScaleAndSharpStraightEdges) {
    const Drawing drawing{{18, 18}, {black({{2, 3}, {14, 10}})}};
    for (const int scale : {1, 2}) {
        const auto raster = drawn(drawing, scale);
        const auto unit = static_cast<std::size_t>(scale);
        ASSERT_EQ(raster.width(), 18 * unit);
        ASSERT_EQ(raster.height(), 18 * unit);
        for (std::size_t y = 0; y < raster.height(); ++y)
            for (std::size_t x = 0; x < raster.width(); ++x) {
                const bool inside =
                    x >= 2 * unit && x < 16 * unit && y >= 3 * unit && y < 13 * unit;
                ASSERT_EQ(raster.coverage(x, y), inside ? 255 : 0) << x << ", " << y;
            }
    }
}

TEST(DrawingRenderer, aGroupIsFadedAsOnePicture) {
    const auto raster = drawn(
        {{10, 10},
         {Group{.opacity = 0.5, .count = 2}, black({{0, 0}, {6, 10}}), black({{4, 0}, {6, 10}})}},
        1);
    for (const std::size_t x : {1U, 5U, 8U})
        EXPECT_NEAR(raster.coverage(x, 5), 128, 2) << x;
}

TEST(DrawingRenderer, aClipCutsOffWhatComesAfterItAndNothingBefore) {
    const auto raster = drawn(
        {{10, 10},
         {black({{0, 0}, {10, 2}}), ClipRectangle{{{0, 0}, {5, 10}}}, black({{0, 4}, {10, 2}})}},
        1);
    EXPECT_EQ(raster.coverage(8, 1), 255);
    EXPECT_EQ(raster.coverage(2, 5), 255);
    EXPECT_EQ(raster.coverage(8, 5), 0);
}

TEST(DrawingRenderer, textLeavesInkInItsPlaceOnly) {
    const auto raster = drawn({{60, 30},
                               {DrawnText{.rect = {{0, 15}, {60, 15}},
                                          .text = "Orrivane",
                                          .size = 11,
                                          .color = ColorRole::black}}},
                              2);
    EXPECT_GT(raster.totalCoverage(), 20);
    for (std::size_t x = 0; x < raster.width(); ++x)
        for (std::size_t y = 0; y < 24; ++y)
            ASSERT_EQ(raster.coverage(x, y), 0) << x << ", " << y;
}

/// Two pixels, red above green.
Image redAboveGreen() {
    NSImage* image =
        drawnImage({{1, 2},
                    {RoundedRectangle{.rect = {{0, 0}, {1, 1}}, .fill = ColorRole::red},
                     RoundedRectangle{.rect = {{0, 1}, {1, 1}}, .fill = ColorRole::green}}},
                   1);
    return imageFromCGImage([image CGImageForProposedRect:nullptr context:nil hints:nil]).value();
}

TEST(DrawingRenderer, anImageStandsUpright) {
    const auto image = redAboveGreen();
    ASSERT_EQ(image.pixelWidth(), 1);
    ASSERT_EQ(image.pixelHeight(), 2);
    const auto raster =
        drawn({{10, 20}, {DrawnImage{.rect = {{0, 0}, {10, 20}}, .image = image}}}, 1);
    const auto top = raster.at(5, 1);
    const auto bottom = raster.at(5, 18);
    EXPECT_GT(top[0], top[1]);
    EXPECT_GT(bottom[1], bottom[0]);
}

TEST(ImageHandle, tellsWhetherEveryPixelIsClear) {
    const auto isClear = [](const Drawing& drawing) {
        NSImage* image = drawnImage(drawing, 1);
        return imageFromCGImage([image CGImageForProposedRect:nullptr context:nil hints:nil])
            .value()
            .body()
            .isClear();
    };
    EXPECT_EQ(isClear({{4, 4}, {}}), std::optional(true));
    EXPECT_EQ(isClear({{4, 4}, {black({{3, 3}, {1, 1}})}}), std::optional(false));
}

TEST(ImageHandle, thereIsNoImageOfNothing) {
    EXPECT_FALSE(imageFromCGImage(nullptr));
}

} // namespace
} // namespace orrivane
