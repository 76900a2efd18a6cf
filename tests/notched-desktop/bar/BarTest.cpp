#include "BarStage.h"
#include "TestWindow.h"
#include "WaitFor.h"

#include <linux/support/SetMonitor.h>

#include <cstdlib>

#include <gtest/gtest.h>

namespace orrivane::e2e {
namespace {

constexpr std::uint32_t black = 0xff000000;

TEST(BarTest, withANotchTheBarIsAsHighAsItAndReservesItsRoom) {
    BarStage stage;
    const auto dock = stage.dock();
    EXPECT_EQ(dock.area, (PixelRect{0, 0, 1512, 37}));
    EXPECT_EQ(dock.type, "_NET_WM_WINDOW_TYPE_DOCK");
    const Observer::Cardinals strut{0, 0, 37, 0, 0, 0, 0, 0, 0, 1511, 0, 0};
    EXPECT_EQ(stage.observer().cardinals(dock.id, "_NET_WM_STRUT_PARTIAL"), strut);
}

TEST(BarTest, withoutANotchTheBarIsTwentyFourPointsHigh) {
    for (const int scale : {1, 2}) {
        BarStage::Options options;
        options.cutouts.clear();
        options.scale = scale;
        BarStage stage(options);
        EXPECT_EQ(stage.dock().area, (PixelRect{0, 0, 1512, 24 * scale}));
    }
}

TEST(BarTest, theBarKeepsItsPlaceUnderAWindowManager) {
    BarStage::Options options;
    options.windowManager = true;
    BarStage stage(options);
    EXPECT_TRUE(waitFor("the bar lies along the top",
                        [&] { return stage.dock().area == PixelRect{0, 0, 1512, 37}; }));
    stage.addIcon("icon", 20);
    EXPECT_EQ(stage.placesOf(1).front().right(), stage.tray().area.right());
}

TEST(BarTest, theNotchIsBlackWithRoundLowerCorners) {
    BarStage stage;
    ASSERT_TRUE(waitFor("the notch shows", [&] { return stage.notch().has_value(); }));
    auto& observer = stage.observer();
    const auto notch = observer.cutouts().front();
    Image image;
    ASSERT_TRUE(waitFor("the notch is painted", [&] {
        image = observer.imageOfRoot(notch);
        return image.at(notch.width / 2, notch.height / 2) == black;
    }));
    EXPECT_EQ(image.at(0, 0), black);
    EXPECT_EQ(image.at(notch.width - 1, 0), black);
    EXPECT_EQ(image.at(notch.width / 2, notch.height - 1), black);
    EXPECT_NE(image.at(0, notch.height - 1), black);
    EXPECT_NE(image.at(notch.width - 1, notch.height - 1), black);
}

TEST(BarTest, theNotchStaysAboveEverythingAndInNobodysWay) {
    BarStage stage;
    ASSERT_TRUE(waitFor("the notch shows", [&] { return stage.notch().has_value(); }));
    auto& observer = stage.observer();
    TestWindow cover(observer, {{600, 0, 300, 200}, true, false, "cover", 0x336699});
    cover.map();
    cover.raise();
    const auto notch = observer.cutouts().front();
    EXPECT_TRUE(waitFor("the notch is above it", [&] {
        return observer.imageOfRoot({notch.centre().x, notch.centre().y, 1, 1}).at(0, 0) == black;
    }));
    EXPECT_EQ(observer.leafAt(notch.centre()), cover.id());
}

TEST(BarTest, barAndNotchFollowTheHardware) {
    BarStage stage;
    stage.addIcon("icon", 20);
    auto& observer = stage.observer();
    observer.setCutouts({{500, 0, 300, 50}});
    EXPECT_TRUE(waitFor("bar and icons are as high as the new notch", [&] {
        return stage.dock().area.height == 50 && stage.placesOf(1).front().height == 50 &&
               stage.notch().has_value();
    }));
    observer.deleteProperty(observer.root(), "_ORRIVANE_DISPLAY_CUTOUT");
    EXPECT_TRUE(waitFor("the bar is plain", [&] {
        return stage.dock().area.height == 24 && stage.placesOf(1).front().height == 24;
    }));
    EXPECT_TRUE(waitFor("no notch is left", [&] {
        return observer.imageOfRoot({600, 2, 100, 20}).colours() == 1 &&
               observer.imageOfRoot({600, 2, 1, 1}).at(0, 0) != black;
    }));
}

TEST(BarTest, theBarIsOnTheMonitorWithTheNotch) {
    BarStage stage;
    auto& observer = stage.observer();
    auto* connection = observer.connection();
    const auto add = [&](const char* name, int x, int width, bool primary) {
        const MonitorRequest request{observer.root(),
                                     observer.atom(name),
                                     static_cast<std::int16_t>(x),
                                     0,
                                     static_cast<std::uint16_t>(width),
                                     982,
                                     primary,
                                     0};
        std::free(xcb_request_check(connection, setMonitor(connection, request)));
    };
    add("left", 0, 700, true);
    add("right", 700, 812, false);
    observer.setCutouts({{1000, 0, 150, 32}});
    EXPECT_TRUE(waitFor("the bar lies on the right monitor",
                        [&] { return stage.dock().area == PixelRect{700, 0, 812, 32}; }));
    stage.addIcon("icon", 20);
    EXPECT_EQ(stage.placesOf(1).front().right(), stage.tray().area.right());
    EXPECT_GT(stage.tray().area.right(), 1300);
}

TEST(BarTest, itTellsItsItemsTheSpacingAndItsColours) {
    for (const bool dark : {false, true}) {
        BarStage::Options options;
        options.dark = dark;
        options.preferences =
            dark ? "NSStatusItemSpacing = -3\nNSStatusItemSelectionPadding = 6\n" : "";
        BarStage stage(options);
        auto& observer = stage.observer();
        const auto metrics = observer.cardinals(stage.tray().id, "_ORRIVANE_ITEM_METRICS");
        const Observer::Cardinals usual{16, 14};
        const Observer::Cardinals stored{static_cast<std::uint32_t>(-3), 6};
        EXPECT_EQ(metrics, dark ? stored : usual);
        const auto colours = observer.cardinals(stage.tray().id, "_ORRIVANE_BAR_COLORS");
        ASSERT_TRUE(colours && colours->size() == 2);
        EXPECT_EQ(colours->at(0) < colours->at(1), dark);
        const auto background = observer.imageOfRoot({1000, 10, 1, 1}).at(0, 0);
        EXPECT_EQ(background, 0xff000000 | colours->at(0));
        const auto inks = observer.cardinals(stage.tray().id, "_NET_SYSTEM_TRAY_COLORS");
        ASSERT_TRUE(inks && inks->size() == 12);
        EXPECT_EQ((inks->at(0) >> 8 << 16) + (inks->at(1) >> 8 << 8) + (inks->at(2) >> 8),
                  colours->at(1));
        EXPECT_EQ(observer.cardinals(stage.tray().id, "_NET_SYSTEM_TRAY_ORIENTATION"),
                  Observer::Cardinals{0});
    }
}

TEST(BarTest, theWallpaperOutlivesTheBar) {
    BarStage stage;
    auto& observer = stage.observer();
    const auto picture = [&] { return observer.imageOfRoot({0, 100, 1512, 882}); };
    ASSERT_TRUE(waitFor("the wallpaper is up", [&] {
        return observer.cardinals(observer.root(), "_XROOTPMAP_ID").has_value();
    }));
    const auto before = picture();
    EXPECT_GT(before.colours(), 200U);
    stage.killBar();
    EXPECT_TRUE(
        waitFor("the same picture shows without the bar", [&] { return picture() == before; }));
    stage.startBar();
    EXPECT_EQ(picture(), before);
}

TEST(BarTest, theClockIsRightOfTheTray) {
    BarStage stage;
    const auto right = stage.tray().area.right();
    EXPECT_TRUE(waitFor("the clock is drawn", [&] {
        return stage.observer().imageOfRoot({right, 0, 1512 - right, 37}).colours() > 8;
    }));
}

TEST(BarTest, aSecondBarLeavesTheFirstAlone) {
    BarStage stage;
    stage.addIcon("icon", 20);
    const auto owner = stage.observer().trayOwner();
    auto second = stage.barProcess("second", {});
    EXPECT_EQ(second.wait(defaultBound), (ExitStatus{1, std::nullopt}));
    EXPECT_NE(second.log().find("another system tray is running"), std::string::npos)
        << second.log();
    EXPECT_EQ(stage.observer().trayOwner(), owner);
    EXPECT_EQ(stage.placesOf(1).size(), 1U);
}

TEST(BarTest, aBarWhoseTrayIsTakenOverEnds) {
    BarStage stage;
    auto& observer = stage.observer();
    TestWindow other(observer, {{0, 0, 10, 10}, true, false, "other tray", 0});
    xcb_set_selection_owner(observer.connection(), other.id(), observer.atom("_NET_SYSTEM_TRAY_S0"),
                            XCB_CURRENT_TIME);
    xcb_flush(observer.connection());
    EXPECT_EQ(stage.bar().wait(defaultBound), (ExitStatus{1, std::nullopt}));
}

TEST(BarTest, wrongArgumentsAreToldAndHelpIsGiven) {
    BarStage stage;
    EXPECT_EQ(stage.barProcess("a", {"--scale", "wide"}).wait(defaultBound),
              (ExitStatus{2, std::nullopt}));
    EXPECT_EQ(stage.barProcess("b", {"--nonsense"}).wait(defaultBound),
              (ExitStatus{2, std::nullopt}));
    auto help = stage.barProcess("c", {"--help"});
    EXPECT_EQ(help.wait(defaultBound), (ExitStatus{0, std::nullopt}));
    EXPECT_NE(help.log().find("ControlCenter"), std::string::npos);
}

} // namespace
} // namespace orrivane::e2e
