#include <Orrivane/MoveEngine.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>

namespace orrivane {
namespace {

TEST(MoveEngineTest, theDragEasesFromTheItemToExactlyTheTarget) {
    const auto points = MoveEngine::dragPoints({1000, 12}, 700);
    EXPECT_NEAR(points.front().x, 1000 - 300 * 17.0 / 864, 1e-9);
    EXPECT_NEAR(points.front().x, 994.097, 0.001);
    EXPECT_EQ(points.back().x, 700);
}

TEST(MoveEngineTest, everyStepLiesOnTheSmoothstepCurve) {
    const auto points = MoveEngine::dragPoints({1000, 12}, 700);
    for (std::size_t i = 0; i < points.size(); ++i) {
        // The curve as a fraction of whole numbers: k²(36 − 2k) ÷ 1728 for step k of 12.
        const auto k = static_cast<double>(i + 1);
        EXPECT_NEAR(points[i].x, 1000 - 300 * k * k * (36 - 2 * k) / 1728, 1e-9) << "step " << k;
    }
}

TEST(MoveEngineTest, theDragStaysAtTheHeightOfTheStart) {
    for (const Point& point : MoveEngine::dragPoints({1000, 12.5}, 700))
        EXPECT_EQ(point.y, 12.5);
}

TEST(MoveEngineTest, aDragToTheRightRunsForwardsOnly) {
    double previous = -50;
    for (const Point& point : MoveEngine::dragPoints({-50, 12}, 340)) {
        EXPECT_GT(point.x, previous);
        previous = point.x;
    }
    EXPECT_EQ(previous, 340);
}

TEST(MoveEngineTest, aTargetUnderTheItemStillGivesTwelvePointsThere) {
    const auto points = MoveEngine::dragPoints({820.5, 12}, 820.5);
    EXPECT_EQ(points.size(), 12U);
    for (const Point& point : points)
        EXPECT_EQ(point, (Point{820.5, 12}));
}

TEST(MoveEngineTest, anUnmeasurableTargetLeavesTheHeightAlone) {
    for (const Point& point :
         MoveEngine::dragPoints({1000, 12}, std::numeric_limits<double>::quiet_NaN())) {
        EXPECT_TRUE(std::isnan(point.x));
        EXPECT_EQ(point.y, 12);
    }
}

} // namespace
} // namespace orrivane
