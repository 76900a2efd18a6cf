#include "support/Canvas.h"

#include <linux/qt/RoleColors.h>

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace orrivane {

namespace {

constexpr double barHeight = 37; // points

Drawing placeholder(double width, CornerStyle corners = CornerStyle::continuous) {
    const Size size{width, barHeight};
    const Rect inner{{6, 6}, {width - 12, barHeight - 12}};
    return {size,
            {ClipRectangle{{{0, 0}, size}, false},
             RoundedRectangle{inner, 4, corners, ColorRole::secondary, 0.4}}};
}

struct PlaceholderRow {
    double width;
    QSize pixels;
    QRect expected;
};

void PrintTo(const PlaceholderRow& row, std::ostream* stream) {
    *stream << row.width << " points in " << row.pixels.width() << " x " << row.pixels.height();
}

class PlaceholderAtScale : public ::testing::TestWithParam<PlaceholderRow> {};

} // namespace

TEST_P(PlaceholderAtScale, isInsetBySixPointsOnEverySide) {
    const auto& row = GetParam();
    EXPECT_EQ(opaqueRect(drawn(placeholder(row.width), row.pixels)), row.expected);
}

INSTANTIATE_TEST_SUITE_P(Scales, PlaceholderAtScale,
                         ::testing::Values(PlaceholderRow{22, {22, 37}, {6, 6, 10, 25}},
                                           PlaceholderRow{22, {33, 56}, {9, 9, 15, 38}},
                                           PlaceholderRow{23, {34, 55}, {9, 9, 16, 37}},
                                           PlaceholderRow{23, {35, 56}, {9, 9, 17, 38}},
                                           PlaceholderRow{22, {44, 74}, {12, 12, 20, 50}}));

TEST(Placeholder, hasTheSecondaryColourAtItsOpacity) {
    for (const auto& colors : {palette(Qt::white, Qt::black), palette(Qt::black, Qt::white)}) {
        const auto image = drawn(placeholder(40), {80, 74}, colors);
        const auto expected = roleColor(ColorRole::secondary, colors);
        const auto pixel = image.pixelColor(40, 37);
        EXPECT_NEAR(pixel.alphaF(), expected.alphaF() * 0.4F, 0.01F);
        EXPECT_EQ(pixel.red(), expected.red());
    }
}

int greatestDifference(const QImage& a, const QImage& b) {
    int greatest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            greatest = std::max(greatest, std::abs(qAlpha(a.pixel(x, y)) - qAlpha(b.pixel(x, y))));
    return greatest;
}

TEST(Placeholder, isSymmetrical) {
    const auto image = drawn(placeholder(23), {35, 56});
    // The toolkit rounds what an edge covers half to either side.
    EXPECT_LE(greatestDifference(image, image.mirrored(true, false)), 1);
    EXPECT_LE(greatestDifference(image, image.mirrored(false, true)), 1);
}

TEST(Placeholder, continuousCornersBeginEarlierThanCircularOnes) {
    const QSize pixels(160, 148); // 4 pixels a point: a radius of 16
    const auto circular = drawn(placeholder(40, CornerStyle::circular), pixels);
    const auto continuous = drawn(placeholder(40, CornerStyle::continuous), pixels);
    const int top = 24;
    const int left = 24;
    // On the edge between where the one and the other begin to bend.
    EXPECT_LT(qAlpha(continuous.pixel(left + 17, top)), qAlpha(circular.pixel(left + 17, top)));
    // Far along the edge both are straight, at the corner both are empty.
    EXPECT_EQ(qAlpha(continuous.pixel(left + 40, top)), qAlpha(circular.pixel(left + 40, top)));
    EXPECT_EQ(qAlpha(continuous.pixel(left, top)), 0);
    EXPECT_EQ(qAlpha(circular.pixel(left, top)), 0);
}

TEST(Placeholder, aCircularCornerIsACircle) {
    const auto image = drawn(placeholder(40, CornerStyle::circular), {160, 148});
    const int full = qAlpha(image.pixel(80, 74));
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) {
            const double distance = std::hypot(15.5 - x, 15.5 - y);
            if (distance < 15) {
                EXPECT_EQ(qAlpha(image.pixel(24 + x, 24 + y)), full) << x << ", " << y;
            }
            if (distance > 17) {
                EXPECT_EQ(qAlpha(image.pixel(24 + x, 24 + y)), 0) << x << ", " << y;
            }
        }
}

TEST(RoleColors, textIsLegibleOnItsGround) {
    const auto light = palette(Qt::white, Qt::black);
    const auto dark = palette(Qt::black, Qt::white);
    EXPECT_EQ(roleColor(ColorRole::primary, dark), QColor(Qt::white));
    EXPECT_EQ(roleColor(ColorRole::primary, light), QColor(Qt::black));
    EXPECT_EQ(roleColor(ColorRole::secondary, dark).rgb(), QColor(Qt::white).rgb());
    EXPECT_EQ(roleColor(ColorRole::secondary, light).rgb(), QColor(Qt::black).rgb());
    EXPECT_LT(roleColor(ColorRole::secondary, light).alpha(), 255);
    for (const auto role : {ColorRole::gray, ColorRole::green, ColorRole::orange, ColorRole::red})
        EXPECT_GT(roleColor(role, dark).lightness(), roleColor(role, light).lightness());
}

} // namespace orrivane
