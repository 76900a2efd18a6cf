#include <desktop/session/SessionOptions.h>

#include <gtest/gtest.h>

namespace orrivane::desktop {
namespace {

std::variant<SessionOptions, SessionText> parse(const std::vector<std::string_view>& arguments) {
    return parseSession(arguments);
}
SessionOptions options(const std::vector<std::string_view>& arguments) {
    const auto parsed = parse(arguments);
    if (const auto* text = std::get_if<SessionText>(&parsed))
        throw std::runtime_error(text->text);
    return std::get<SessionOptions>(parsed);
}

TEST(SessionOptions, withoutArgumentsItIsALaptopOfFourteenInches) {
    const auto usual = options({});
    EXPECT_EQ(usual.panel, (Panel{1512, 982, 663, 0, 185, 37}));
    EXPECT_EQ(usual.scale, 1);
    EXPECT_EQ(usual.items.size(), 18U);
    EXPECT_EQ(usual.screens, 1);
    EXPECT_TRUE(usual.windows);
    EXPECT_FALSE(usual.dark);
}

TEST(SessionOptions, theKnownPanelsHaveTheirOwnPixelsAtTwoAPoint) {
    for (const auto& [name, width, height, rows] :
         {std::tuple{"13", 2560, 1664, 64}, std::tuple{"14", 3024, 1964, 74},
          std::tuple{"15", 2880, 1864, 64}, std::tuple{"16", 3456, 2234, 74}}) {
        const auto panel = options({"--panel", name, "--scale", "2"}).panel;
        EXPECT_EQ(panel, (Panel{width, height, (width - 370) / 2, 0, 370, rows})) << name;
    }
}

TEST(SessionOptions, anyNotchInAnySize) {
    EXPECT_EQ(options({"--panel", "100,0,200,30", "--size", "800x600"}).panel,
              (Panel{800, 600, 100, 0, 200, 30}));
    EXPECT_EQ(options({"--panel", "0,0,0,0"}).panel.notchWidth, 0);
}

TEST(SessionOptions, itemsAreAllNoneOrTheseInTheirOrder) {
    EXPECT_TRUE(options({"--items", "none"}).items.empty());
    EXPECT_EQ(options({"--items", "all"}).items, SessionOptions::allItems());
    EXPECT_EQ(options({"--items", "wifi,battery"}).items,
              (std::vector<std::string>{"wifi", "battery"}));
}

TEST(SessionOptions, whatStandsBehindTheTwoDashesIsTheProgram) {
    EXPECT_EQ(options({"--dark", "--", "sh", "-c", "--dark"}).program,
              (std::vector<std::string>{"sh", "-c", "--dark"}));
}

TEST(SessionOptions, helpAndVersionPrintAndEndWell) {
    for (const auto* argument : {"--help", "--version"})
        EXPECT_EQ(std::get<SessionText>(parse({argument})).status, 0) << argument;
}

TEST(SessionOptions, whatMakesNoSenseIsNamed) {
    const std::vector<std::pair<std::vector<std::string_view>, std::string>> cases{
        {{"--frob"}, "'--frob'"},
        {{"--panel"}, "--panel needs a value"},
        {{"--panel", "17"}, "'17'"},
        {{"--panel", "1,2,3"}, "'1,2,3'"},
        {{"--panel", "1,2,3,-4"}, "'1,2,3,-4'"},
        {{"--panel", "1,2,3,4,5"}, "'1,2,3,4,5'"},
        {{"--panel", "1,,3,4"}, "'1,,3,4'"},
        {{"--size", "800x600"}, "--size goes with"},
        {{"--panel", "1,0,3,4", "--size", "wide"}, "'wide'"},
        {{"--panel", "1,0,3,4", "--size", "10x10"}, "'10x10'"},
        {{"--scale", "0"}, "'0'"},
        {{"--scale", "nan"}, "'nan'"},
        {{"--scale", "2x"}, "'2x'"},
        {{"--items", "wifi,frob"}, "'frob'"},
        {{"--items", ""}, "''"},
        {{"--screens", "3"}, "'3'"},
        {{"--"}, "after --"},
    };
    for (const auto& [arguments, expected] : cases) {
        const auto parsed = parse(arguments);
        const auto* text = std::get_if<SessionText>(&parsed);
        ASSERT_NE(text, nullptr) << expected;
        EXPECT_EQ(text->status, 2);
        EXPECT_NE(text->text.find(expected), std::string::npos) << text->text;
    }
}

} // namespace
} // namespace orrivane::desktop
