#include <Orrivane/support/IdIndex.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <unordered_map>

namespace orrivane {
namespace {

TEST(IdIndexTest, anEmptyOneKnowsNothing) {
    const IdIndex index;
    EXPECT_FALSE(index.find(0));
    EXPECT_FALSE(index.find(25));
}

TEST(IdIndexTest, newIdsAreNumberedInTheirOrder) {
    IdIndex index;
    for (const std::uint32_t id : {70U, 3U, 500U})
        EXPECT_TRUE(index.insert(id));
    EXPECT_EQ(index.find(70), 0U);
    EXPECT_EQ(index.find(3), 1U);
    EXPECT_EQ(index.find(500), 2U);
    EXPECT_FALSE(index.find(4));
}

TEST(IdIndexTest, aKnownIdKeepsItsPositionAndUsesNone) {
    IdIndex index;
    EXPECT_TRUE(index.insert(7));
    EXPECT_FALSE(index.insert(7));
    EXPECT_TRUE(index.insert(8));
    EXPECT_EQ(index.find(7), 0U);
    EXPECT_EQ(index.find(8), 1U);
}

TEST(IdIndexTest, zeroAndTheLargestNumberAreIdsLikeOthers) {
    IdIndex index;
    EXPECT_TRUE(index.insert(0));
    EXPECT_TRUE(index.insert(std::numeric_limits<std::uint32_t>::max()));
    EXPECT_FALSE(index.insert(0));
    EXPECT_EQ(index.find(0), 0U);
    EXPECT_EQ(index.find(std::numeric_limits<std::uint32_t>::max()), 1U);
}

TEST(IdIndexTest, thousandsOfIdsOfAnyKindAnswerLikeTheStandardMap) {
    std::mt19937 random(20);
    // In a row, at the same low bits, at the same high bits, and anywhere.
    for (const std::uint32_t step : {1U, 1U << 20U, 2U, 0U}) {
        IdIndex index;
        std::unordered_map<std::uint32_t, std::size_t> expected;
        for (std::uint32_t i = 0; i < 4000; ++i) {
            const auto id = step == 0 ? static_cast<std::uint32_t>(random() % 6000) : i * step;
            EXPECT_EQ(index.insert(id), expected.emplace(id, expected.size()).second);
        }
        for (const auto& [id, position] : expected)
            EXPECT_EQ(index.find(id), position);
        for (int i = 0; i < 4000; ++i) {
            if (const auto id = static_cast<std::uint32_t>(random()); !expected.contains(id)) {
                EXPECT_FALSE(index.find(id));
            }
        }
    }
}

} // namespace
} // namespace orrivane
