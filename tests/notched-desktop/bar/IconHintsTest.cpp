#include <desktop/bar/IconHints.h>

#include <gtest/gtest.h>

namespace orrivane::desktop {
namespace {

constexpr std::uint32_t minimum = 1U << 4;
constexpr std::uint32_t base = 1U << 8;

std::vector<std::uint32_t> hints(std::uint32_t flags, std::uint32_t least, std::uint32_t usual) {
    std::vector<std::uint32_t> words(18, 0);
    words[0] = flags;
    words[5] = least;
    words[15] = usual;
    return words;
}

TEST(IconHintsTest, theBaseSizeGoesBeforeTheMinimum) {
    EXPECT_EQ(declaredWidth(hints(minimum | base, 20, 44)), 44);
    EXPECT_EQ(declaredWidth(hints(minimum, 20, 44)), 20);
    EXPECT_EQ(declaredWidth(hints(base, 20, 44)), 44);
}

TEST(IconHintsTest, withoutFlagsOrHintsNothingIsDeclared) {
    EXPECT_EQ(declaredWidth(hints(0, 20, 44)), 0);
    EXPECT_EQ(declaredWidth({}), 0);
    EXPECT_EQ(declaredWidth({minimum | base}), 0);
}

TEST(IconHintsTest, aWidthOfOnePixelOrWiderThanAWindowCanBeDeclaresNothing) {
    EXPECT_EQ(declaredWidth(hints(base, 0, 1)), 0);
    EXPECT_EQ(declaredWidth(hints(base, 0, 0xffffffff)), 0);
    EXPECT_EQ(declaredWidth(hints(minimum | base, 20, 1)), 20);
}

TEST(IconHintsTest, theClassIsTheSecondOfTwoNames) {
    using namespace std::string_view_literals;
    EXPECT_EQ(classOf("volume\0Volume\0"sv), "Volume");
    EXPECT_EQ(classOf("volume\0Volume"sv), "Volume");
    EXPECT_EQ(classOf("volume\0Volume\0more\0"sv), "Volume");
    EXPECT_EQ(classOf("\0\0"sv), "");
    EXPECT_EQ(classOf("volume"sv), "");
    EXPECT_EQ(classOf(""sv), "");
}

} // namespace
} // namespace orrivane::desktop
