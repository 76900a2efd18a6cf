#include <Orrivane/SqueezeEngine.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace orrivane {
namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();

TEST(SqueezeEngineTest, thePaddingIsTwoLessThanTheSpacing) {
    EXPECT_EQ(SqueezeEngine::padding(16), 14);
    EXPECT_EQ(SqueezeEngine::padding(6), 4);
    EXPECT_EQ(SqueezeEngine::padding(5), 3);
}

TEST(SqueezeEngineTest, thePaddingIsNeverLessThanTwo) {
    EXPECT_EQ(SqueezeEngine::padding(4), 2);
    EXPECT_EQ(SqueezeEngine::padding(3), 2);
    EXPECT_EQ(SqueezeEngine::padding(0), 2);
    EXPECT_EQ(SqueezeEngine::padding(-100), 2);
}

TEST(SqueezeEngineTest, thePaddingFollowsTheSpacingToBothEndsOfItsRange) {
    EXPECT_EQ(SqueezeEngine::padding(std::numeric_limits<std::int64_t>::max()),
              std::numeric_limits<std::int64_t>::max() - 2);
    EXPECT_EQ(SqueezeEngine::padding(lowest + 2), 2);
}

TEST(SqueezeEngineDeathTest, aSpacingTooLowToSubtractFromEndsTheProgram) {
    EXPECT_DEATH(SqueezeEngine::padding(lowest + 1), "");
    EXPECT_DEATH(SqueezeEngine::padding(lowest), "");
}

} // namespace
} // namespace orrivane
