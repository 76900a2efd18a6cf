#include <linux/support/Outcome.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace orrivane {
namespace {

TEST(Outcome, aFailureIsFalseAndSaysWhy) {
    EXPECT_TRUE(Outcome::success());
    EXPECT_EQ(Outcome::success().text(), "");
    EXPECT_FALSE(Outcome::failure("the disk is full"));
    EXPECT_EQ(Outcome::failure("the disk is full").text(), "the disk is full");
    // Also one without words; and never by accident a number or a text.
    EXPECT_FALSE(Outcome::failure(""));
    static_assert(!std::is_convertible_v<Outcome, bool>);
}

} // namespace
} // namespace orrivane
