#include <Orrivane/support/PlainText.h>

#include <gtest/gtest.h>

#include <limits>

namespace orrivane {
namespace {

TEST(PlainText, numbersHaveAsFewDecimalsAsTheyNeed) {
    EXPECT_EQ(decimal(0), "0");
    EXPECT_EQ(decimal(-12), "-12");
    EXPECT_EQ(decimal(1.25), "1.25");
    EXPECT_EQ(decimal(-0.05), "-0.05");
    EXPECT_EQ(decimal(600.00002), "600");
    EXPECT_EQ(decimal(-0.001), "0");
}

TEST(PlainText, whatIsNoNumberIsNull) {
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    for (const double value : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN(), 1e15})
        EXPECT_EQ(decimal(value), "null");
}

TEST(PlainText, everyByteThatIsNoUtf8IsReplaced) {
    const std::string bad = "\xef\xbf\xbd";
    EXPECT_EQ(jsonString("a\xff"), "\"a" + bad + "\"");
    EXPECT_EQ(jsonString("\xc3"), "\"" + bad + "\"");
    EXPECT_EQ(jsonString("\xe2\x82"), "\"" + bad + bad + "\"");
    EXPECT_EQ(jsonString("\xc3("), "\"" + bad + "(\"");
    // Overlong, a surrogate, beyond the last code point, a lone continuation.
    EXPECT_EQ(oneLine("\xc0\x80"), bad + bad);
    EXPECT_EQ(oneLine("\xe0\x80\x80"), bad + bad + bad);
    EXPECT_EQ(oneLine("\xed\xa0\x80"), bad + bad + bad);
    EXPECT_EQ(oneLine("\xf4\x90\x80\x80"), bad + bad + bad + bad);
    EXPECT_EQ(oneLine("\x80"), bad);
}

TEST(PlainText, wellFormedCharactersOfEveryLengthStay) {
    const std::string text = "a\xc3\xbc\xe2\x82\xac\xf0\x9f\x98\x80\xed\x9f\xbf\xf4\x8f\xbf\xbf";
    EXPECT_EQ(jsonString(text), "\"" + text + "\"");
    EXPECT_EQ(oneLine(text), text);
}

TEST(PlainText, aLineStaysALine) {
    EXPECT_EQ(oneLine("a\nb\tc\x1b[2J\x7f"), "a b c [2J ");
    EXPECT_EQ(oneLine("a\xe2\x80\xa8"
                      "b\xc2\x85"
                      "c"),
              "a b c");
    EXPECT_EQ(oneLine(std::string("a\0b", 3)), "a b");
}

} // namespace
} // namespace orrivane
