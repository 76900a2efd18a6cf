#include <linux/support/Text.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace orrivane {
namespace {

TEST(Text, blanksAtTheEndsGo) {
    EXPECT_EQ(trimmed(" \ta b\r"), "a b");
    EXPECT_EQ(trimmed(" \t "), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed("\fa\v"), "\fa\v");
    EXPECT_EQ(trimmed("\fa\v", "\f\v"), "a");
}

TEST(Text, linesAreTakenOneByOne) {
    const auto lines = [](std::string_view text) {
        std::vector<std::string> result;
        while (!text.empty())
            result.emplace_back(takeLine(text));
        return result;
    };
    EXPECT_EQ(lines("a\n\nb"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_EQ(lines("a\r\n"), std::vector<std::string>{"a\r"});
    EXPECT_TRUE(lines("").empty());
}

TEST(Text, aNumberIsTheWholeTextOrNone) {
    EXPECT_EQ(numberIn<int>("-12"), -12);
    EXPECT_EQ(numberIn<std::int64_t>("9223372036854775807"), INT64_MAX);
    for (const char* text : {"", " 1", "1 ", "+1", "1.0", "0x1", "2147483648"})
        EXPECT_EQ(numberIn<int>(text), std::nullopt) << text;
}

} // namespace
} // namespace orrivane
