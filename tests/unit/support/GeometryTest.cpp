#include <Orrivane/support/Geometry.h>

#include <gtest/gtest.h>

#include <limits>

namespace orrivane {
namespace {

TEST(GeometryTest, theAccessorsOfAnOrdinaryRectangleAreItsNumbers) {
    constexpr Rect rect{{10, -20}, {30, 40}};
    EXPECT_EQ(rect.minX(), 10);
    EXPECT_EQ(rect.minY(), -20);
    EXPECT_EQ(rect.maxX(), 40);
    EXPECT_EQ(rect.maxY(), 20);
    EXPECT_EQ(rect.midX(), 25);
    EXPECT_EQ(rect.midY(), 0);
    EXPECT_EQ(rect.width(), 30);
    EXPECT_EQ(rect.height(), 40);
}

TEST(GeometryTest, aNegativeWidthReachesLeftOfTheOrigin) {
    constexpr Rect rect{{10, 5}, {-30, 40}};
    EXPECT_EQ(rect.minX(), -20);
    EXPECT_EQ(rect.maxX(), 10);
    EXPECT_EQ(rect.width(), 30);
    EXPECT_EQ(rect.midX(), -5);
    EXPECT_EQ(rect.minY(), 5);
    EXPECT_EQ(rect.maxY(), 45);
}

TEST(GeometryTest, aNegativeHeightReachesToTheOtherSideOfTheOrigin) {
    constexpr Rect rect{{10, 5}, {30, -40}};
    EXPECT_EQ(rect.minY(), -35);
    EXPECT_EQ(rect.maxY(), 5);
    EXPECT_EQ(rect.height(), 40);
    EXPECT_EQ(rect.midY(), -15);
    EXPECT_EQ(rect.minX(), 10);
    EXPECT_EQ(rect.maxX(), 40);
}

TEST(GeometryTest, originAndSizeStayRaw) {
    constexpr Rect rect{{10, 5}, {-30, -40}};
    EXPECT_EQ(rect.origin, (Point{10, 5}));
    EXPECT_EQ(rect.size, (Size{-30, -40}));
}

TEST(GeometryTest, theStandardisedRectangleHasTheSameEdgesAndPositiveExtents) {
    constexpr Rect raw{{10, 5}, {-30, -40}};
    constexpr Rect rect = raw.standardized();
    EXPECT_EQ(rect.origin, (Point{-20, -35}));
    EXPECT_EQ(rect.size, (Size{30, 40}));
    EXPECT_EQ(rect.maxX(), raw.maxX());
    EXPECT_EQ(rect.maxY(), raw.maxY());
}

TEST(GeometryTest, rectanglesAreEqualWhenTheyCoverTheSameArea) {
    EXPECT_EQ((Rect{{10, 5}, {-30, -40}}), (Rect{{-20, -35}, {30, 40}}));
    EXPECT_NE((Rect{{10, 5}, {-30, 40}}), (Rect{{10, 5}, {30, 40}}));
    EXPECT_NE((Rect{{10, 5}, {30, 40}}), (Rect{{10, 5}, {30, 40.0000001}}));
    EXPECT_NE((Rect{{10, 5}, {30, 40}}), (Rect{{10, 6}, {30, 40}}));
    EXPECT_NE((Rect{{10, 5}, {30, 40}}), (Rect{{10, 5}, {30.0000001, 40}}));
}

TEST(GeometryTest, emptyRectanglesAtDifferentPlacesDiffer) {
    EXPECT_EQ((Rect{{10, 5}, {0, 0}}), (Rect{{10, 5}, {-0.0, 0}}));
    EXPECT_NE((Rect{{10, 5}, {0, 0}}), (Rect{{11, 5}, {0, 0}}));
}

TEST(GeometryTest, aRectangleThatIsNoNumberEqualsNothing) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr Rect rect{{none, 0}, {1, 1}};
    EXPECT_FALSE(rect == rect);
}

} // namespace
} // namespace orrivane
