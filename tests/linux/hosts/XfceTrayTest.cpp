#include <linux/hosts/XfceTray.h>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

using Settings = XfceTraySettings;
using Names = std::vector<std::string>;
constexpr XfceTray::Measures bar{24, 37};

struct Tightening {
    Settings own;
    int reduction;
    Settings wanted;
};

class XfceTrayTightening : public testing::TestWithParam<Tightening> {};

TEST_P(XfceTrayTightening, takesGapsFirstAndThenTheIconsSize) {
    EXPECT_EQ(XfceTray::tightened(GetParam().own, GetParam().reduction, bar), GetParam().wanted);
}

INSTANTIATE_TEST_SUITE_P(
    Settings, XfceTrayTightening,
    testing::Values(Tightening{{}, 0, {}}, Tightening{{24, true, {}}, -5, {24, true, {}}},
                    // Cells as wide as the bar is high: the gap alone is more than enough.
                    Tightening{{24, true, {}}, 1, {24, false, {}}},
                    Tightening{{24, true, {}}, 11, {24, false, {}}},
                    Tightening{{24, true, {}}, 12, {23, false, {}}},
                    Tightening{{24, false, {}}, 4, {20, false, {}}},
                    Tightening{{}, 4, {18, {}, {}}},
                    // Two rows of these would fit: one is asked for.
                    Tightening{{}, 6, {16, {}, true}}, Tightening{{}, 100, {12, {}, true}},
                    Tightening{{10, {}, {}}, 4, {10, {}, {}}},
                    Tightening{{12, {}, {}}, 4, {12, {}, {}}},
                    // As large as the panel allows: what is seen counts.
                    Tightening{{0, {}, {}}, 4, {20, {}, {}}}));

TEST(XfceTray, withoutAnyIconTheAutomaticSizeIsTakenForTheOrdinaryOne) {
    EXPECT_EQ(XfceTray::tightened({0, {}, {}}, 2, {0, 37}), (Settings{20, {}, {}}));
}

class XfceTrayOrder : public testing::Test {
  protected:
    // a, b, c, d at 10, 20, 30, 40; "gone" is no icon at present.
    std::vector<XfceTray::Icon> icons{{"a", 10}, {"b", 20}, {"c", 30}, {"d", 40}};
    Names known{"a", "gone", "b", "c", "d"};
};

TEST_F(XfceTrayOrder, anIconGoesWhereTheMiddlesPassTheTarget) {
    const auto order = [&](std::size_t moved, double toX) {
        return XfceTray::reordered(known, icons, moved, toX);
    };
    EXPECT_EQ(order(3, 1), (Names{"d", "a", "gone", "b", "c"}));
    EXPECT_EQ(order(3, 15), (Names{"a", "gone", "d", "b", "c"}));
    EXPECT_EQ(order(0, 25), (Names{"gone", "b", "a", "c", "d"}));
    EXPECT_EQ(order(0, 99), (Names{"gone", "b", "c", "d", "a"}));
    EXPECT_EQ(order(1, 35), (Names{"a", "gone", "c", "b", "d"}));
}

TEST_F(XfceTrayOrder, whereItStandsAlreadyNothingChanges) {
    EXPECT_EQ(XfceTray::reordered(known, icons, 2, 30), std::nullopt);
    EXPECT_EQ(XfceTray::reordered(known, icons, 3, 99), std::nullopt);
    EXPECT_EQ(XfceTray::reordered({"a"}, {{"a", 10}}, 0, 99), std::nullopt);
}

TEST_F(XfceTrayOrder, namesThatAreNotListedYetStandLeftmost) {
    EXPECT_EQ(XfceTray::reordered({"c", "d"}, icons, 2, 99), (Names{"a", "b", "d", "c"}));
    EXPECT_EQ(XfceTray::reordered({}, icons, 0, 99), (Names{"b", "c", "d", "a"}));
}

TEST_F(XfceTrayOrder, withoutANameOrAnIconNothingCanBeSaid) {
    icons[1].name.clear();
    EXPECT_EQ(XfceTray::reordered(known, icons, 1, 99), std::nullopt);
    EXPECT_EQ(XfceTray::reordered(known, icons, 4, 99), std::nullopt);
    EXPECT_EQ(XfceTray::reordered(known, {}, 0, 99), std::nullopt);
}

TEST_F(XfceTrayOrder, iconsOfOneNameMoveTogether) {
    icons = {{"a", 10}, {"b", 20}, {"a", 30}, {"c", 40}};
    EXPECT_EQ(XfceTray::reordered({"a", "b", "c"}, icons, 0, 99), (Names{"b", "c", "a"}));
}

TEST_F(XfceTrayOrder, aNameListedTwiceIsListedOnceAfterwards) {
    EXPECT_EQ(XfceTray::reordered({"a", "b", "a", "c", "d"}, icons, 0, 99),
              (Names{"b", "c", "d", "a"}));
}

} // namespace
} // namespace orrivane
