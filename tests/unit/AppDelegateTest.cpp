#include <Orrivane/AppDelegate.h>

#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace orrivane {
namespace {

constexpr double chrome = 28;

/// A window whose content is 620 points high, under its title bar.
constexpr Rect frame{{266, 250}, {980, 620 + chrome}};

std::optional<Rect> fitted(double requested, std::optional<double> visibleHeight = 900) {
    return AppDelegate::fittedFrame(frame, 620, chrome, visibleHeight, requested);
}

TEST(AppDelegateTest, contentTooHighForTheScreenStops24PointsShortOfTheVisibleFrame) {
    const auto result = fitted(2000);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->height() - chrome, 876);
}

TEST(AppDelegateTest, withoutAScreenTheContentStopsAt776Points) {
    const auto result = fitted(2000, std::nullopt);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->height() - chrome, 776);
}

TEST(AppDelegateTest, theWindowGrowsAndShrinksDownwardUnderItsTopEdge) {
    for (const double requested : {700.0, 500.0}) {
        const auto result = fitted(requested);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->maxY(), frame.maxY());
        EXPECT_EQ(result->minX(), frame.minX());
        EXPECT_EQ(result->width(), frame.width());
        EXPECT_EQ(result->height(), requested + chrome);
    }
}

TEST(AppDelegateTest, littleContentMakesTheWindowLowerThanTheUserMay) {
    constexpr double little = AppDelegate::minimumWindowSize.height / 2;
    const auto result = fitted(little);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->height() - chrome, little);
}

TEST(AppDelegateTest, aFrameOfNegativeExtentIsFittedAsTheSameFrameStandardised) {
    const Rect turned{{frame.maxX(), frame.maxY()}, {-frame.width(), -frame.height()}};
    EXPECT_EQ(AppDelegate::fittedFrame(turned, 620, chrome, 900, 700), fitted(700));
    EXPECT_TRUE(fitted(700));
}

TEST(AppDelegateTest, aDifferenceOfExactlyFourPointsChangesNothing) {
    EXPECT_EQ(fitted(620), std::nullopt);
    EXPECT_EQ(fitted(624), std::nullopt);
    EXPECT_EQ(fitted(616), std::nullopt);
}

TEST(AppDelegateTest, aDifferenceOfFourAndAHalfPointsResizes) {
    EXPECT_TRUE(fitted(624.5));
    EXPECT_TRUE(fitted(615.5));
}

TEST(AppDelegateTest, theDifferenceIsTakenAfterTheLimitOfTheScreen) {
    EXPECT_EQ(fitted(2000, 644 + 4), std::nullopt);
    EXPECT_TRUE(fitted(2000, 644 + 4.5));
}

TEST(AppDelegateTest, anInfiniteRequestStopsAtTheLimitOfTheScreen) {
    const auto result = fitted(std::numeric_limits<double>::infinity());
    ASSERT_TRUE(result);
    EXPECT_EQ(result->height() - chrome, 876);
}

TEST(AppDelegateTest, aRequestThatIsNoHeightChangesNothing) {
    EXPECT_EQ(fitted(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_EQ(fitted(-std::numeric_limits<double>::infinity()), std::nullopt);
}

} // namespace
} // namespace orrivane
