#include "support/Canvas.h"
#include "support/Pictures.h"

#include <linux/qt/DrawingPainter.h>

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace orrivane {

namespace {

constexpr double barHeight = 37; // points

Drawing pictureIn(const Rect& rect, const Size& size, std::shared_ptr<const PixelImage> picture,
                  ContentMode mode) {
    return {size,
            {ClipRectangle{{{0, 0}, size}, false},
             DrawnImage{rect, Image(std::move(picture)), 2, mode}}};
}

Drawing mirroredIcon(double width, std::shared_ptr<const PixelImage> picture) {
    const Size size{width, barHeight};
    return pictureIn({{0, 0}, size}, size, std::move(picture), ContentMode::fill);
}

// The mean of the source over a rectangle of it, by the definition of an integral.
std::array<double, 4> meanOver(const PixelImage& image, double left, double top, double right,
                               double bottom) {
    std::array<double, 4> sum{};
    double area = 0;
    for (int y = 0; y < image.pixelHeight(); ++y)
        for (int x = 0; x < image.pixelWidth(); ++x) {
            const double part =
                std::max(0.0, std::min(right, x + 1.0) - std::max(left, double(x))) *
                std::max(0.0, std::min(bottom, y + 1.0) - std::max(top, double(y)));
            area += part;
            for (std::size_t i = 0; i < sum.size(); ++i)
                sum[i] += part * ((image.at(x, y) >> (8 * i)) & 0xff);
        }
    for (auto& channel : sum)
        channel /= area;
    return sum;
}

int largestDifference(QRgb pixel, const std::array<double, 4>& expected) {
    double largest = 0;
    for (std::size_t i = 0; i < expected.size(); ++i)
        largest = std::max(largest, std::abs(((pixel >> (8 * i)) & 0xff) - expected[i]));
    return static_cast<int>(std::ceil(largest - 0.500001));
}

} // namespace

TEST(DrawingPainter, copiesACapturePixelByPixelAtTwoPixelsAPoint) {
    const auto picture = noisyPicture(44, 74);
    const auto image = drawn(mirroredIcon(22, picture), {44, 74});
    for (int y = 0; y < 74; ++y)
        for (int x = 0; x < 44; ++x)
            ASSERT_EQ(image.pixel(x, y), picture->at(x, y)) << x << ", " << y;
}

TEST(DrawingPainter, takesTheMeanOfFourPixelsAtOnePixelAPoint) {
    const auto picture = noisyPicture(44, 74);
    const auto image = drawn(mirroredIcon(22, picture), {22, 37});
    for (int y = 0; y < 37; ++y)
        for (int x = 0; x < 22; ++x)
            ASSERT_EQ(largestDifference(image.pixel(x, y),
                                        meanOver(*picture, 2 * x, 2 * y, 2 * x + 2, 2 * y + 2)),
                      0)
                << x << ", " << y;
}

TEST(DrawingPainter, takesTheMeanOfWhatAPixelCoversAtOneAndAHalf) {
    const auto picture = noisyPicture(44, 74);
    // 37 points are 55.5 pixels: the panel got 56, so the picture fills them and loses at the
    // sides.
    const auto image = drawn(mirroredIcon(22, picture), {33, 56});
    const double step = 74.0 / 56;
    const double left = (44 - 33 * step) / 2;
    for (int y = 0; y < 56; ++y)
        for (int x = 0; x < 33; ++x)
            ASSERT_EQ(largestDifference(image.pixel(x, y),
                                        meanOver(*picture, left + x * step, y * step,
                                                 left + (x + 1) * step, (y + 1) * step)),
                      0)
                << x << ", " << y;
}

TEST(DrawingPainter, aPictureThatFillsIsCroppedOnBothSidesAlike) {
    // Twice as wide as high, into a square: a quarter is cut off at either side.
    const auto picture = std::make_shared<PixelImage>(40, 20);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 40; ++x)
            picture->set(x, y, x < 10 || x >= 30 ? 0xffff0000 : 0xff0000ff);
    const Size size{20, 20};
    const auto image = drawn(pictureIn({{0, 0}, size}, size, picture, ContentMode::fill), {20, 20});
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            ASSERT_EQ(image.pixel(x, y), 0xff0000ff) << x << ", " << y;
}

TEST(DrawingPainter, anOddRestOfAPixelDoesNotBlurACopy) {
    const auto picture = noisyPicture(45, 74);
    const auto image = drawn(mirroredIcon(22, picture), {44, 74});
    for (int x = 0; x < 44; ++x)
        ASSERT_EQ(image.pixel(x, 30), picture->at(x, 30)) << x;
}

TEST(DrawingPainter, aPictureThatFitsIsCentredAndLeavesTheRestAlone) {
    const Size size{20, 20};
    const auto image =
        drawn(pictureIn({{0, 0}, size}, size, plainPicture(40, 20, 0xff00ff00), ContentMode::fit),
              {20, 20});
    EXPECT_EQ(opaqueRect(image), QRect(0, 5, 20, 10));
}

TEST(DrawingPainter, aStretchedPictureCoversItsRectangleExactly) {
    const Size size{20, 20};
    const auto image = drawn(
        pictureIn({{2, 3}, {10, 12}}, size, plainPicture(7, 31, 0xff00ff00), ContentMode::stretch),
        {20, 20});
    EXPECT_EQ(opaqueRect(image), QRect(2, 3, 10, 12));
    EXPECT_EQ(image.pixel(2, 3), 0xff00ff00);
}

TEST(DrawingPainter, enlargesBetweenPixelsWithoutGoingBeyondThem) {
    const auto picture = std::make_shared<PixelImage>(2, 1);
    picture->set(0, 0, 0xff000000);
    picture->set(1, 0, 0xffffffff);
    const Size size{8, 4};
    const auto image =
        drawn(pictureIn({{0, 0}, size}, size, picture, ContentMode::stretch), {8, 4});
    EXPECT_EQ(qRed(image.pixel(0, 0)), 0);
    EXPECT_EQ(qRed(image.pixel(7, 0)), 255);
    for (int x = 1; x < 8; ++x)
        EXPECT_GE(qRed(image.pixel(x, 0)), qRed(image.pixel(x - 1, 0)));
    EXPECT_EQ(qRed(image.pixel(3, 0)) + qRed(image.pixel(4, 0)), 255);
}

TEST(DrawingPainter, aTranslucentPictureKeepsItsAlpha) {
    const Size size{10, 10};
    const auto image =
        drawn(pictureIn({{0, 0}, size}, size, plainPicture(20, 20, 0x80402010), ContentMode::fill),
              {10, 10});
    EXPECT_EQ(*reinterpret_cast<const QRgb*>(image.constScanLine(5)), 0x80402010);
}

TEST(DrawingPainter, nothingIsDrawnOutsideAClip) {
    const Drawing drawing{
        {20, 20},
        {ClipRectangle{{{5, 5}, {10, 10}}, false},
         DrawnImage{{{0, 0}, {20, 20}}, Image(plainPicture(4, 4, 0xffffffff)), 1}}};
    EXPECT_EQ(opaqueRect(drawn(drawing, {20, 20})), QRect(5, 5, 10, 10));
    EXPECT_EQ(opaqueRect(drawn(drawing, {30, 30})), QRect(8, 8, 15, 15));
}

TEST(DrawingPainter, aClipHoldsForWhatFollowsIt) {
    const DrawnImage all{{{0, 0}, {20, 20}}, Image(plainPicture(4, 4, 0xffffffff)), 1};
    const Drawing drawing{{20, 20}, {all, ClipRectangle{{{5, 5}, {10, 10}}, false}}};
    EXPECT_EQ(opaqueRect(drawn(drawing, {20, 20})), QRect(0, 0, 20, 20));
}

TEST(DrawingPainter, anAntialiasedClipCoversPixelsInPart) {
    const Drawing drawing{
        {20, 20},
        {ClipRectangle{{{5, 5}, {9, 10}}, true},
         RoundedRectangle{{{0, 0}, {20, 20}}, 0, CornerStyle::circular, ColorRole::black, 1}}};
    const auto image = drawn(drawing, {30, 30});
    EXPECT_EQ(qAlpha(image.pixel(15, 15)), 255);
    EXPECT_NEAR(qAlpha(image.pixel(7, 15)), 128, 3);
    EXPECT_EQ(qAlpha(image.pixel(6, 15)), 0);
    EXPECT_EQ(qAlpha(image.pixel(21, 15)), 0);
}

TEST(DrawingPainter, drawsWhereItIsToldAndNowhereElse) {
    auto image = canvas({60, 40});
    QPainter painter(&image);
    const QPalette colors;
    const Size size{10, 20};
    const auto drawing =
        pictureIn({{0, 0}, size}, size, plainPicture(20, 40, 0xff123456), ContentMode::fill);
    DrawingPainter(painter, colors).draw(drawing, QRect(30, 7, 10, 20));
    painter.end();
    EXPECT_EQ(opaqueRect(image), QRect(30, 7, 10, 20));
}

TEST(DrawingPainter, aDrawingOrTargetWithoutExtentIsNothing) {
    const auto drawing = mirroredIcon(22, noisyPicture(44, 74));
    auto image = canvas({5, 5});
    QPainter painter(&image);
    const QPalette colors;
    DrawingPainter(painter, colors).draw(drawing, QRect(0, 0, 0, 5));
    DrawingPainter(painter, colors).draw(Drawing{{0, 37}, drawing.primitives}, QRect(0, 0, 5, 5));
    painter.end();
    EXPECT_EQ(opaqueRect(image), QRect());
}

} // namespace orrivane
