#include <Orrivane/view/RoundedOutline.h>

#include <gtest/gtest.h>

#include <cmath>

namespace orrivane {
namespace {

Point middle(Point from, const CurveTo& curve) {
    const auto mean = [](double a, double b, double c, double d) {
        return (a + 3 * b + 3 * c + d) / 8;
    };
    return {mean(from.x, curve.control1.x, curve.control2.x, curve.to.x),
            mean(from.y, curve.control1.y, curve.control2.y, curve.to.y)};
}

const Rect box{{10, 20}, {100, 40}};

TEST(RoundedOutline, fourEdgesAndFourCornersAreClosed) {
    const auto outline = roundedOutline(box, 8, CornerStyle::circular);
    ASSERT_EQ(outline.size(), 9U);
    EXPECT_EQ(std::get<MoveTo>(outline[0]).to, (Point{10, 28}));
    EXPECT_EQ(std::get<CurveTo>(outline[1]).to, (Point{18, 20}));
    EXPECT_EQ(std::get<LineTo>(outline[2]).to, (Point{102, 20}));
    EXPECT_EQ(std::get<CurveTo>(outline[3]).to, (Point{110, 28}));
    EXPECT_EQ(std::get<LineTo>(outline[4]).to, (Point{110, 52}));
    EXPECT_EQ(std::get<CurveTo>(outline[5]).to, (Point{102, 60}));
    EXPECT_EQ(std::get<LineTo>(outline[6]).to, (Point{18, 60}));
    EXPECT_EQ(std::get<CurveTo>(outline[7]).to, (Point{10, 52}));
    EXPECT_TRUE(std::holds_alternative<ClosePath>(outline[8]));
}

TEST(RoundedOutline, bothKindsOfCornerCrossTheDiagonalWhereTheCircleDoes) {
    for (const auto corners : {CornerStyle::circular, CornerStyle::continuous}) {
        const auto outline = roundedOutline(box, 8, corners);
        const auto crossing =
            middle(std::get<MoveTo>(outline[0]).to, std::get<CurveTo>(outline[1]));
        EXPECT_NEAR(std::hypot(crossing.x - 18, crossing.y - 28), 8, 1e-9);
        EXPECT_NEAR(crossing.x - 10, crossing.y - 20, 1e-9);
    }
}

TEST(RoundedOutline, aContinuousCornerBeginsEarlier) {
    const auto outline = roundedOutline(box, 8, CornerStyle::continuous);
    EXPECT_NEAR(std::get<MoveTo>(outline[0]).to.y, 20 + 8 * 1.528665, 1e-9);
}

TEST(RoundedOutline, noCornerIsLargerThanHalfTheShorterSide) {
    for (const auto corners : {CornerStyle::circular, CornerStyle::continuous})
        EXPECT_EQ(roundedOutline(box, 1000, corners), roundedOutline(box, 20, corners));
    const auto outline = roundedOutline(box, 15, CornerStyle::continuous);
    EXPECT_EQ(std::get<MoveTo>(outline[0]).to, (Point{10, 40}));
}

TEST(RoundedOutline, withoutARadiusTheCornersAreSharp) {
    for (const double radius : {0.0, -3.0}) {
        const auto outline = roundedOutline(box, radius, CornerStyle::continuous);
        EXPECT_EQ(std::get<MoveTo>(outline[0]).to, (Point{10, 20}));
        EXPECT_EQ(std::get<CurveTo>(outline[1]), (CurveTo{{10, 20}, {10, 20}, {10, 20}}));
    }
}

} // namespace
} // namespace orrivane
