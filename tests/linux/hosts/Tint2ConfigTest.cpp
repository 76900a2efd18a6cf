#include <linux/hosts/Tint2Config.h>

#include <gtest/gtest.h>

#include <vector>

namespace orrivane {
namespace {

struct Reading {
    const char* text;
    std::optional<std::string> line;
};

class Tint2ConfigReading : public testing::TestWithParam<Reading> {};

TEST_P(Tint2ConfigReading, findsTheLineThatCounts) {
    const auto line = Tint2Config::paddingLine(GetParam().text);
    EXPECT_EQ(line ? std::optional(std::string(*line)) : std::nullopt, GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    Files, Tint2ConfigReading,
    testing::Values(Reading{"", std::nullopt}, Reading{"panel_size = 100% 30\n", std::nullopt},
                    Reading{"#systray_padding = 1 2 3\n", std::nullopt},
                    Reading{"# systray_padding = 1 2 3\n", std::nullopt},
                    Reading{"systray_padding 1 2 3\n", std::nullopt},
                    Reading{"my_systray_padding = 1 2 3\n", std::nullopt},
                    Reading{"systray_padding = 1 2 3", "systray_padding = 1 2 3"},
                    Reading{"a = b\n  systray_padding=4\nb = c\n", "  systray_padding=4"},
                    Reading{"systray_padding = 1 2 3\r\nx = y\r\n", "systray_padding = 1 2 3"},
                    Reading{"systray_padding = 1 2 3\nsystray_padding = 4 5 6\n# end\n",
                            "systray_padding = 4 5 6"}));

struct Line {
    const char* line;
    int gap;
    const char* withSeven;
};

class Tint2ConfigLine : public testing::TestWithParam<Line> {};

TEST_P(Tint2ConfigLine, isReadAsThePanelReadsItAndKeepsItsOtherNumbers) {
    EXPECT_EQ(Tint2Config::gap(GetParam().line), GetParam().gap);
    EXPECT_EQ(Tint2Config::withGap(GetParam().line, 7), GetParam().withSeven);
    EXPECT_EQ(Tint2Config::gap(Tint2Config::withGap(GetParam().line, 7)), 7);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, Tint2ConfigLine,
    testing::Values(Line{"systray_padding = 0 4 6", 6, "systray_padding = 0 4 7"},
                    Line{"systray_padding=1 2 3", 3, "systray_padding=1 2 7"},
                    // The first number is the gap, too, where there is no third.
                    Line{"systray_padding = 5", 5, "systray_padding = 5 0 7"},
                    Line{"systray_padding = 5 2", 5, "systray_padding = 5 2 7"},
                    Line{"\tsystray_padding\t=\t1 2 -3 ", -3, "\tsystray_padding\t=\t1 2 7"},
                    Line{"systray_padding = 1 2 3 # tight", 3, "systray_padding = 1 2 7"},
                    Line{"systray_padding =", 0, "systray_padding =0 0 7"},
                    Line{"systray_padding = a b c", 0, "systray_padding = 0 0 7"},
                    Line{"systray_padding = 0 0 99999999999999999999", 10000,
                         "systray_padding = 0 0 7"}));

TEST(Tint2Config, exchangingALineTouchesNoOtherByte) {
    const std::string text("# \xff mine\r\nsystray_padding = 1 2 3\r\n\0odd\nlast", 43);
    const auto line = Tint2Config::paddingLine(text);
    ASSERT_TRUE(line);
    const auto changed = Tint2Config::replaced(text, *line, "systray_padding = 1 2 0");
    EXPECT_EQ(changed.size(), text.size());
    EXPECT_EQ(changed.substr(0, 10), text.substr(0, 10));
    const auto back = Tint2Config::find(changed, "systray_padding = 1 2 0");
    ASSERT_TRUE(back);
    EXPECT_EQ(Tint2Config::replaced(changed, *back, *line), text);
}

TEST(Tint2Config, anAppendedLineIsTakenAwayWithoutATrace) {
    const std::string line = "systray_padding = 0 0 9";
    for (const std::string text :
         {"", "\n", "a = b", "a = b\n", "a = b\r\n", "a = b\r\nc = d", "a\n\n", "\r\n"}) {
        const auto longer = Tint2Config::appended(text, line);
        const auto added = Tint2Config::paddingLine(longer);
        ASSERT_TRUE(added) << longer;
        EXPECT_EQ(*added, line);
        EXPECT_EQ(Tint2Config::removed(longer, *added, Tint2Config::separator(text)), text);
        EXPECT_EQ(longer.ends_with('\n'), text.empty() || text.ends_with('\n'));
    }
}

TEST(Tint2Config, whatWasWrittenBehindAnAppendedLineStays) {
    const std::string line = "systray_padding = 0 0 9";
    const auto text = Tint2Config::appended("a = b", line) + "\nc = d\n";
    EXPECT_EQ(Tint2Config::removed(text, *Tint2Config::paddingLine(text), "\n"), "a = b\nc = d\n");
}

} // namespace
} // namespace orrivane
