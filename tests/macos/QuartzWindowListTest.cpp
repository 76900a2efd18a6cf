#include <macos/system/QuartzWindowList.h>

#include <tests/macos/MacSystemTest.h>
#include <tests/macos/fakes/WindowServer.h>
#include <tests/support/ScriptedScreens.h>

#include <limits>

namespace orrivane {
namespace {

using fakes::windowEntry;

struct QuartzWindowListTest : MacSystemTest {
    fakes::WindowServer& server = fakes::WindowServer::shared();
    QuartzWindowList list;

    /// What is read of the only window there is.
    WindowListEntry readOf(const fakes::Any& entry) {
        server.windows = {{entry}};
        const auto entries = list.allWindows();
        EXPECT_EQ(entries.size(), 1U);
        return entries.empty() ? WindowListEntry{} : entries.front();
    }
    WindowListEntry readOf(const std::string& key, const fakes::Any& value) {
        return readOf(fakes::table({{key, value}}));
    }
};

TEST_F(QuartzWindowListTest, aWellFormedEntryIsReadAsItStands) {
    const auto entry = readOf(windowEntry(25, 77, fakes::rectTable(1300, 0, 30, 24), true));
    EXPECT_EQ(entry, (WindowListEntry{25, 77, Rect{{1300, 0}, {30, 24}}, true}));
}

TEST_F(QuartzWindowListTest, aKeyThatIsMissingIsAbsent) {
    EXPECT_EQ(readOf(fakes::table({})), WindowListEntry{});
    EXPECT_EQ(readOf("kCGWindowLayer", fakes::integer(-2147483623)).layer, -2147483623);
    EXPECT_EQ(readOf(windowEntry(25, 77, fakes::rectTable(0, 0, 1, 1), false)).onscreen,
              std::nullopt);
}

TEST_F(QuartzWindowListTest, aValueOfAnotherTypeIsAbsent) {
    const std::vector<fakes::Any> others{fakes::text("25"), fakes::list({}), fakes::point(1, 2)};
    for (const std::string key :
         {"kCGWindowLayer", "kCGWindowNumber", "kCGWindowBounds", "kCGWindowIsOnscreen"})
        for (const auto& value : others)
            EXPECT_EQ(readOf(key, value), WindowListEntry{}) << key;
    EXPECT_EQ(readOf("kCGWindowLayer", fakes::truth(true)), WindowListEntry{});
    EXPECT_EQ(readOf("kCGWindowNumber", fakes::truth(true)), WindowListEntry{});
    EXPECT_EQ(readOf("kCGWindowIsOnscreen", fakes::integer(1)), WindowListEntry{});
}

TEST_F(QuartzWindowListTest, aNumberThatIsNoWindowNumberIsAbsent) {
    EXPECT_EQ(readOf("kCGWindowNumber", fakes::integer(0xffffffff)).number, 0xffffffffU);
    const std::vector<fakes::Any> others{fakes::integer(-1), fakes::integer(0x100000000),
                                         fakes::real(7.5), fakes::real(1e300)};
    for (const auto& number : others)
        EXPECT_EQ(readOf("kCGWindowNumber", number).number, std::nullopt);
}

TEST_F(QuartzWindowListTest, aRectangleThatLacksANumberIsAbsent) {
    const auto number = fakes::real(1);
    EXPECT_EQ(readOf("kCGWindowBounds", fakes::table({})).bounds, std::nullopt);
    EXPECT_EQ(readOf("kCGWindowBounds", fakes::table({{"X", number}, {"Y", number}})).bounds,
              std::nullopt);
    EXPECT_EQ(readOf("kCGWindowBounds", fakes::table({{"X", number},
                                                      {"Y", number},
                                                      {"Width", fakes::text("30")},
                                                      {"Height", number}}))
                  .bounds,
              std::nullopt);
}

TEST_F(QuartzWindowListTest, aRectangleWithANumberThatIsNotFiniteIsAbsent) {
    const auto infinity = std::numeric_limits<double>::infinity();
    const auto nan = std::numeric_limits<double>::quiet_NaN();
    for (const double bad : {infinity, -infinity, nan})
        for (std::size_t place = 0; place < 4; ++place) {
            double n[] = {1, 2, 30, 24};
            n[place] = bad;
            const auto bounds = fakes::rectTable(n[0], n[1], n[2], n[3]);
            EXPECT_EQ(readOf("kCGWindowBounds", bounds).bounds, std::nullopt) << place;
        }
}

TEST_F(QuartzWindowListTest, aRectangleOfNegativeExtentStaysRaw) {
    const auto bounds = readOf("kCGWindowBounds", fakes::rectTable(30, 24, -30, -24)).bounds;
    ASSERT_TRUE(bounds);
    EXPECT_EQ(bounds->origin, (Point{30, 24}));
    EXPECT_EQ(bounds->size, (Size{-30, -24}));
}

TEST_F(QuartzWindowListTest, membersThatAreNoDictionariesAreLeftOut) {
    server.windows = {{fakes::integer(25)},
                      {fakes::Any()},
                      {windowEntry(25, 77, fakes::rectTable(0, 0, 1, 1), true)},
                      {fakes::text("window")}};
    const auto entries = list.allWindows();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries.front().number, 77U);
}

TEST_F(QuartzWindowListTest, anOwnedWindowIsAnEntryWithItsProcess) {
    const auto bounds = fakes::rectTable(1300, 0, 30, 24);
    server.windows = {{windowEntry(25, 77, bounds, true)},
                      {fakes::integer(25)},
                      {windowEntry(0, 78, bounds, false), false},
                      {windowEntry(0, 79, bounds, true), true, true}};
    const auto owned = list.ownedWindows();
    ASSERT_EQ(owned.size(), 2U);
    EXPECT_EQ(owned[0], (OwnedWindow{{25, 77, Rect{{1300, 0}, {30, 24}}, true}, 4711, "Editor"}));
    EXPECT_EQ(owned[1].window.number, 78U);
    EXPECT_EQ(owned[1].window.onscreen, std::nullopt);
}

TEST_F(QuartzWindowListTest, anOwnerThatIsMissingOrOfAnotherTypeIsAbsent) {
    const auto ownerIn = [&](const fakes::Any& entry) {
        server.windows = {{entry}};
        const auto owned = list.ownedWindows();
        EXPECT_EQ(owned.size(), 1U);
        return owned.empty() ? OwnedWindow{} : owned.front();
    };
    EXPECT_EQ(ownerIn(fakes::table({})), OwnedWindow{});
    const std::vector<fakes::Any> noProcesses{fakes::text("4711"), fakes::truth(true),
                                              fakes::integer(-1), fakes::integer(0x80000000),
                                              fakes::real(7.5)};
    for (const auto& value : noProcesses)
        EXPECT_EQ(ownerIn(fakes::table({{"kCGWindowOwnerPID", value}})).process, std::nullopt);
    EXPECT_EQ(ownerIn(fakes::table({{"kCGWindowOwnerPID", fakes::integer(0x7fffffff)}})).process,
              0x7fffffff);
    for (const auto& value : {fakes::integer(4711), fakes::list({})})
        EXPECT_EQ(ownerIn(fakes::table({{"kCGWindowOwnerName", value}})).owner, std::nullopt);
}

TEST_F(QuartzWindowListTest, aListThatCannotBeReadIsEmpty) {
    server.windows = {{windowEntry(25, 77, fakes::rectTable(0, 0, 1, 1), true)}};
    server.isUnreachable = true;
    EXPECT_TRUE(list.allWindows().empty());
    EXPECT_TRUE(list.onscreenWindows().empty());
    EXPECT_TRUE(list.ownedWindows().empty());
}

TEST_F(QuartzWindowListTest, theListsKeepTheServersOrderAndDifferInWhatTheyLeaveOut) {
    const auto window = [](std::int64_t number, bool isOnscreen) {
        return windowEntry(25, number, fakes::rectTable(0, 0, 1, 1), isOnscreen);
    };
    server.windows = {{window(3, true), true, false},
                      {window(1, false), false, false},
                      {window(2, true), true, true}};
    const auto numbers = [](const std::vector<WindowListEntry>& entries) {
        std::vector<std::uint32_t> result;
        for (const auto& entry : entries)
            result.push_back(entry.number.value_or(0));
        return result;
    };
    EXPECT_EQ(numbers(list.allWindows()), (std::vector<std::uint32_t>{3, 1}));
    EXPECT_EQ(numbers(list.onscreenWindows()), (std::vector<std::uint32_t>{3, 2}));
}

TEST_F(QuartzWindowListTest, theCensusFindsWhatTheNotchCoversAmongMalformedEntries) {
    ScriptedScreens screens;
    screens.list = {ScriptedScreens::notched()};
    server.windows = {{fakes::integer(25)},
                      {windowEntry(25, 1, fakes::rectTable(900, 0, 30, 37), true)},
                      {windowEntry(25, 2, fakes::text("nowhere"), true)},
                      {windowEntry(25, 3, fakes::rectTable(700, 0, 30, 37), false), false},
                      {windowEntry(0, 4, fakes::rectTable(800, 0, 30, 37), true)}};
    const auto census = WindowCensus::take(screens, list);
    ASSERT_EQ(census.items.size(), 2U);
    EXPECT_EQ(census.items[0], (StatusItemWindow{3, {{700, 0}, {30, 37}}, false, true}));
    EXPECT_EQ(census.items[1], (StatusItemWindow{1, {{900, 0}, {30, 37}}, true, false}));
}

} // namespace
} // namespace orrivane
