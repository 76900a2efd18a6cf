#include <linux/qt/QtPopover.h>

#include <gtest/gtest.h>

#include <ostream>

namespace orrivane {
namespace {

constexpr QSize size(980, 640);
constexpr QRect screen(0, 37, 1728, 1080);

struct Case {
    const char* name;
    QSize wanted;
    QRect anchor;
    QRect available;
    QRect place;
};

void PrintTo(const Case& each, std::ostream* out) {
    *out << each.name;
}

class PopoverPlace : public ::testing::TestWithParam<Case> {};

TEST_P(PopoverPlace, isBesideItsAnchorAndOnTheScreen) {
    const auto& [name, wanted, anchor, available, place] = GetParam();
    EXPECT_EQ(popoverPlace(wanted, anchor, available), place);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PopoverPlace,
    ::testing::Values(
        Case{"centredDirectlyBelowTheIcon", size, {800, 0, 31, 37}, screen, {325, 37, 980, 640}},
        Case{"clampedAtTheRight", size, {1700, 0, 28, 37}, screen, {740, 37, 980, 640}},
        Case{"clampedAtTheLeft", size, {4, 0, 28, 37}, screen, {8, 37, 980, 640}},
        Case{"directlyAboveAnIconInTheLowerHalf",
             size,
             {800, 1080, 31, 37},
             {0, 0, 1728, 1080},
             {325, 432, 980, 640}},
        Case{"noLargerThanASmallScreen",
             size,
             {700, 0, 30, 24},
             {0, 24, 800, 500},
             {8, 24, 784, 492}},
        Case{"onTheScreenOfTheIcon",
             size,
             {1800, 0, 30, 37},
             {1728, 37, 1728, 1080},
             {1736, 37, 980, 640}}),
    [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace orrivane
