#include "support/Canvas.h"

#include <Orrivane/MenuBarIcon.h>
#include <linux/qt/QtStatusBar.h>

#include <QPixmap>

#include <gtest/gtest.h>

#include <cmath>

namespace orrivane {
namespace {

const QColor ink(0x20, 0x60, 0xa0);

/// The figure at so many pixels a point.
QImage figure(int scale) {
    return drawn(MenuBarIcon::image(), {22 * scale, 18 * scale});
}

int alphaAt(const QImage& image, double x, double y, int scale) {
    return qAlpha(image.pixel(static_cast<int>(x * scale), static_cast<int>(y * scale)));
}

class MenuBarIconPixels : public ::testing::TestWithParam<int> {};

TEST_P(MenuBarIconPixels, itReachesAsFarAsItsRoundEndsAndNoFurther) {
    const int scale = GetParam();
    // From the left arm's cap to the right leg's, from the head's top to the legs' caps.
    const QRectF points(QPointF(3.8 - 0.9, 0.7), QPointF(18.5 + 1.1, 16.2 + 1.1));
    const QRectF pixels(points.topLeft() * scale, points.bottomRight() * scale);
    EXPECT_EQ(opaqueRect(figure(scale)), pixels.toAlignedRect());
}

TEST_P(MenuBarIconPixels, headTorsoAndLimbsAreBlackAndWhatLiesBetweenIsClear) {
    const int scale = GetParam();
    const auto image = figure(scale);
    const std::pair<double, double> inside[]{{9.25, 2.45}, {9.6, 7.6}, {7.4, 11.3}, {12.2, 11.4}};
    for (const auto& [x, y] : inside)
        EXPECT_EQ(image.pixel(static_cast<int>(x * scale), static_cast<int>(y * scale)),
                  qRgba(0, 0, 0, 255))
            << x << ", " << y;
    const std::pair<double, double> outside[]{{1, 1},     {20.5, 1},  {1, 16.5}, {20.8, 16.8},
                                              {10.4, 15}, {5.6, 4.5}, {13, 4.5}, {6.8, 2.4}};
    for (const auto& [x, y] : outside)
        EXPECT_EQ(alphaAt(image, x, y, scale), 0) << x << ", " << y;
}

TEST_P(MenuBarIconPixels, theTraysPictureIsTheFigureInTheTraysInk) {
    const int cell = 22 * GetParam();
    const auto picture = drawnIcon(MenuBarIcon::image(), ink, false).pixmap(cell, cell).toImage();
    ASSERT_EQ(picture.size(), QSize(cell, cell));
    const auto expected = figure(GetParam());
    const int top = (cell - expected.height()) / 2;
    for (int y = 0; y < cell; ++y)
        for (int x = 0; x < cell; ++x) {
            const auto pixel = picture.pixelColor(x, y);
            const bool inFigure = y >= top && y < top + expected.height();
            const int alpha = inFigure ? qAlpha(expected.pixel(x, y - top)) : 0;
            ASSERT_EQ(pixel.alpha(), alpha) << x << ", " << y;
            if (alpha == 255) {
                ASSERT_EQ(pixel, ink) << x << ", " << y;
            }
        }
}

TEST_P(MenuBarIconPixels, anUpdateIsARedDotInItsUpperRightCorner) {
    const int cell = 22 * GetParam();
    const auto plain = drawnIcon(MenuBarIcon::image(), ink, false).pixmap(cell, cell).toImage();
    const auto badged = drawnIcon(MenuBarIcon::image(), ink, true).pixmap(cell, cell).toImage();
    const auto dot = badged.pixelColor(cell * 4 / 5, cell / 5);
    EXPECT_GT(dot.red(), 150);
    EXPECT_LT(dot.green(), 120);
    EXPECT_EQ(badged.copy(0, cell / 2, cell, cell / 2), plain.copy(0, cell / 2, cell, cell / 2));
}

INSTANTIATE_TEST_SUITE_P(Scales, MenuBarIconPixels, ::testing::Values(1, 2));

TEST(MenuBarIconPixelsAtBothScales, areOneFigure) {
    const auto small = figure(1);
    const auto large = figure(2);
    double sum = 0;
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x) {
            int four = 0;
            for (const int i : {0, 1, 2, 3})
                four += qAlpha(large.pixel(2 * x + i % 2, 2 * y + i / 2));
            sum += std::abs(qAlpha(small.pixel(x, y)) - four / 4.0);
        }
    EXPECT_LT(sum / (small.width() * small.height()), 3);
}

} // namespace
} // namespace orrivane
