#include <Orrivane/WindowCensus.h>

#include <tests/support/ScriptedPlatform.h>

#include <gtest/gtest.h>

#include <cmath>

namespace orrivane {
namespace {

using Entries = std::vector<WindowListEntry>;
using Descriptions = std::vector<ScreenDescription>;

ScreenDescription notched(double minX = 600, double maxX = 800) {
    return ScriptedScreens::notched({1512, 982}, 37, minX, maxX);
}

WindowListEntry item(std::uint32_t number, double x, double width, double y = 0,
                     double height = 24) {
    return {25, number, Rect{{x, y}, {width, height}}, false};
}

CensusResult take(const Descriptions& screens, const Entries& all, const Entries& onscreen = {}) {
    return WindowCensus::take(screens, all, onscreen);
}

std::vector<std::uint32_t> ids(const std::vector<StatusItemWindow>& items) {
    std::vector<std::uint32_t> result;
    for (const auto& each : items)
        result.push_back(each.id);
    return result;
}

using Ids = std::vector<std::uint32_t>;

TEST(WindowCensus, withoutScreensTheLineIsZeroAndNothingIsEaten) {
    const auto result = take({}, {item(1, 5000, 20, 2), item(2, 10, 20, -2), item(3, 10, 20, 2.5)});
    EXPECT_FALSE(result.notch);
    EXPECT_EQ(ids(result.items), (Ids{2, 1}));
    EXPECT_TRUE(result.eaten().empty());
}

TEST(WindowCensus, aScreenWithoutTopInsetIsNeverNotched) {
    auto flat = notched();
    flat.safeAreaTop = 0;
    EXPECT_FALSE(take({flat, flat, flat}, {}).notch);
}

TEST(WindowCensus, theFirstScreenWithAnInsetSuppliesNotchAndLine) {
    auto second = notched();
    second.frame.origin = {1920, 98}; // its top edge is 0 below the primary's
    second.auxiliaryTopLeftArea = Rect{{1920, 1043}, {600, 37}};
    second.auxiliaryTopRightArea = Rect{{2720, 1043}, {712, 37}};
    auto lower = second;
    lower.frame.origin.y = 0; // top at 982: the line is 98
    const auto result = take({ScriptedScreens::plain(), lower},
                             {item(1, 2600, 20, 98), item(2, 2600, 20, 0), item(3, 100, 20, 98)});
    ASSERT_TRUE(result.notch);
    EXPECT_EQ(*result.notch, (NotchInfo{1512, 1920, 37, 2520, 2720}));
    EXPECT_EQ(ids(result.items), Ids{1});
    EXPECT_TRUE(result.items.front().isEaten);
}

TEST(WindowCensus, aMissingAuxiliaryAreaGivesNoNotchButStillSetsTheLine) {
    for (const bool leftMissing : {true, false}) {
        auto screen = notched();
        screen.frame.origin.y = -982; // below the primary one: its top is at 1080
        (leftMissing ? screen.auxiliaryTopLeftArea : screen.auxiliaryTopRightArea).reset();
        const auto result =
            take({ScriptedScreens::plain(), screen}, {item(1, 10, 20, 1080), item(2, 10, 20, 0)});
        EXPECT_FALSE(result.notch);
        EXPECT_EQ(ids(result.items), Ids{1});
    }
}

TEST(WindowCensus, theLineIsMeasuredFromThePrimaryScreensTopWhereverThatLies) {
    const auto raised = ScriptedScreens::plain({{-1920, 100}, {1920, 1080}});
    EXPECT_EQ(ids(take({raised, notched()}, {item(1, 10, 20, 198), item(2, 10, 20, 98)}).items),
              Ids{1});
}

TEST(WindowCensus, otherLayersAndLargerWindowsAreDropped) {
    auto below = item(1, 10, 20);
    below.layer = 24;
    auto above = item(2, 10, 20);
    above.layer = 26;
    const auto result =
        take({notched()}, {below, above, item(3, 10, 20, 0, 40.0001), item(4, 10, 400.0001)});
    EXPECT_TRUE(result.items.empty());
}

TEST(WindowCensus, heightOf40AndWidthOf400AreKept) {
    EXPECT_EQ(ids(take({notched()}, {item(1, 10, 20, 0, 40), item(2, 20, 400)}).items),
              (Ids{1, 2}));
}

TEST(WindowCensus, aTopTwoPointsFromTheLineIsKeptAndFartherIsDropped) {
    EXPECT_EQ(ids(take({notched()}, {item(1, 1, 20, 2.0), item(2, 2, 20, 2.01),
                                     item(3, 3, 20, -2.0), item(4, 4, 20, -2.01)})
                      .items),
              (Ids{1, 3}));
}

TEST(WindowCensus, onlyAnOverlapOfPositiveWidthIsEaten) {
    const auto result = take({notched()}, {item(1, 560, 40), item(2, 560, 40.5), item(3, 800, 30),
                                           item(4, 799.5, 30), item(5, 650, 20)});
    EXPECT_EQ(ids(result.eaten()), (Ids{2, 5, 4}));
}

TEST(WindowCensus, aPointOfSlackAroundTheNotchedScreen) {
    EXPECT_EQ(ids(take({notched()},
                       {item(1, 1493, 20), item(2, 1493.5, 20), item(3, -1, 20), item(4, -1.5, 20)})
                      .items),
              (Ids{3, 1}));
}

TEST(WindowCensus, withoutNotchWindowsOfEveryScreenPass) {
    EXPECT_EQ(ids(take({ScriptedScreens::plain()}, {item(1, 9000, 20), item(2, -9000, 20)}).items),
              (Ids{2, 1}));
}

TEST(WindowCensus, ofARepeatedNumberTheFirstThatPassedWins) {
    const auto result = take({notched()}, {item(7, 10, 401), item(7, 20, 20), item(7, 30, 20)});
    ASSERT_EQ(result.items.size(), 1U);
    EXPECT_EQ(result.items.front().frame.minX(), 20);
}

TEST(WindowCensus, malformedEntriesAreSkipped) {
    auto noLayer = item(1, 10, 20);
    noLayer.layer.reset();
    auto noNumber = item(2, 10, 20);
    noNumber.number.reset();
    auto noBounds = item(3, 10, 20);
    noBounds.bounds.reset();
    auto noFlag = item(4, 10, 20);
    noFlag.onscreen.reset();
    const auto result = take({notched()}, {noLayer, noNumber, noBounds, noFlag});
    EXPECT_EQ(ids(result.items), Ids{4});
    EXPECT_FALSE(result.items.front().isOnscreen);
}

TEST(WindowCensus, eitherListMakesAWindowOnscreen) {
    auto marked = item(2, 20, 20);
    marked.onscreen = true;
    WindowListEntry numberless{25, std::nullopt, Rect{}, true};
    const auto result = take({notched()}, {item(1, 10, 20), marked, item(3, 30, 20)},
                             {numberless, {std::nullopt, 1, std::nullopt, std::nullopt}});
    ASSERT_EQ(result.items.size(), 3U);
    EXPECT_TRUE(result.items[0].isOnscreen);
    EXPECT_TRUE(result.items[1].isOnscreen);
    EXPECT_FALSE(result.items[2].isOnscreen);
}

TEST(WindowCensus, equalLeftEdgesKeepTheListsOrder) {
    EXPECT_EQ(
        ids(take({notched()}, {item(5, 30, 20), item(9, 10, 20), item(2, 30, 10), item(7, 30, 40)})
                .items),
        (Ids{9, 5, 2, 7}));
}

TEST(WindowCensus, eatenOfAResultWithoutNotchIsEmpty) {
    EXPECT_TRUE(take({ScriptedScreens::plain()}, {item(1, 700, 20)}).eaten().empty());
}

TEST(WindowCensus, negativeExtentsCountAsTheStandardisedRectangle) {
    const auto result = take({notched()}, {{25, 1, Rect{{620, 24}, {-20, -24}}, true},
                                           {25, 2, Rect{{620, 0}, {-20, 24}}, true}});
    // The origin is raw: the first one's lies 24 below the line.
    ASSERT_EQ(ids(result.items), Ids{2});
    EXPECT_EQ(result.items.front().frame.minX(), 600);
    EXPECT_TRUE(result.items.front().isEaten);
}

TEST(WindowCensus, theOrderIsThatOfTheStandardisedLeftEdges) {
    EXPECT_EQ(ids(take({notched()}, {item(1, 20, 10), item(2, 40, -25), item(3, 30, 10)}).items),
              (Ids{2, 1, 3}));
}

TEST(WindowCensus, aRectangleWithACoordinateThatIsNoNumberIsNone) {
    const double none = std::nan("");
    for (const auto& screen : {notched(), ScriptedScreens::plain()}) {
        const auto result =
            take({screen}, {item(1, none, 20), item(2, 10, none), item(3, 10, 20, none),
                            item(4, 10, 20, 0, none), item(5, 10, 20)});
        EXPECT_EQ(ids(result.items), Ids{5});
    }
}

TEST(WindowCensus, asksThePortsForScreensThenTheFullThenTheOnscreenList) {
    ScriptedPlatform world;
    world.screens.list = {notched()};
    world.windowList.add(4, {{700, 0}, {20, 24}});
    const auto result = WindowCensus::take(world.screens, world.windowList);
    EXPECT_EQ(ids(result.eaten()), Ids{4});
    EXPECT_EQ(world.journal.calls(),
              (std::vector<std::string>{"screens", "allWindows", "onscreenWindows"}));
}

TEST(StatusItemWindow, equalityComparesStandardisedFrames) {
    const StatusItemWindow a{1, {{10, 0}, {20, 24}}, true, false};
    const StatusItemWindow b{1, {{30, 24}, {-20, -24}}, true, false};
    EXPECT_EQ(a, b);
    auto other = b;
    other.isEaten = true;
    EXPECT_NE(a, other);
}

} // namespace
} // namespace orrivane
