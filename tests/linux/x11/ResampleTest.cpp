#include <linux/x11/Resample.h>

#include <gtest/gtest.h>

namespace orrivane::x11 {
namespace {

PixelImage icon() {
    return PixelImage(2, 2, {0xff000000U, 0xffffffffU, 0x80402010U, 0U});
}

TEST(ResampleTest, wholeFactorsRepeatPixels) {
    const auto canvas = onCanvas(icon(), 6, 6, 3, 0);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(canvas->at(x, y), icon().at(x / 3, y / 3)) << x << ' ' << y;
}

TEST(ResampleTest, theIconStartsAtItsTopAndTheRestIsTransparent) {
    const auto canvas = onCanvas(icon(), 3, 7, 1, 4);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(canvas->at(x, y), x < 2 && y >= 4 && y < 6 ? icon().at(x, y - 4) : 0U);
}

TEST(ResampleTest, whatLiesOutsideTheCanvasIsCutOff) {
    const auto canvas = onCanvas(icon(), 1, 1, 1, -1);
    EXPECT_EQ(canvas->at(0, 0), icon().at(0, 1));
    EXPECT_EQ(onCanvas(icon(), 2, 2, 1, 5)->pixels(), std::vector<std::uint32_t>(4, 0));
    EXPECT_EQ(onCanvas(icon(), 2, 2, 1, -5)->pixels(), std::vector<std::uint32_t>(4, 0));
}

TEST(ResampleTest, otherFactorsBlendNeighboursAndStayPremultiplied) {
    const PixelImage step(2, 1, {0U, 0x80808080U});
    const auto canvas = onCanvas(step, 3, 1, 1.5, 0);
    EXPECT_EQ(canvas->at(0, 0), 0U);
    EXPECT_EQ(canvas->at(1, 0), 0x40404040U);
    EXPECT_EQ(canvas->at(2, 0), 0x80808080U);
}

TEST(ResampleTest, anEvenSurfaceStaysEven) {
    for (const double factor : {0.5, 4.0 / 3, 1.6, 2.0}) {
        const PixelImage even(24, 24, std::vector<std::uint32_t>(24 * 24, 0xff123456U));
        const int size = static_cast<int>(24 * factor);
        const auto canvas = onCanvas(even, size, size, factor, 0);
        for (const auto pixel : canvas->pixels())
            ASSERT_EQ(pixel, 0xff123456U) << factor;
    }
}

TEST(ResampleTest, aCanvasOfNoSizeIsEmpty) {
    EXPECT_TRUE(onCanvas(icon(), 0, 0, 2, 0)->pixels().empty());
}

} // namespace
} // namespace orrivane::x11
