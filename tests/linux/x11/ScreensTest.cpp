#include "support/Desk.h"
#include "support/RandR.h"

#include <linux/x11/KnownPanels.h>

namespace orrivane::x11 {
namespace {

class ScreensTest : public Desk {
  protected:
    using Desk::Desk;

    std::vector<ScreenDescription> screens() {
        settle();
        return port().screens.screens();
    }
    ScreenDescription only() {
        const auto all = screens();
        EXPECT_EQ(all.size(), 1U);
        return all.empty() ? ScreenDescription{} : all.front();
    }
    static Rect frame(double x, double y, double width, double height) {
        return {{x, y}, {width, height}};
    }
};

TEST_F(ScreensTest, aSingleScreenIsTheWholeRoot) {
    EXPECT_EQ(only(), (ScreenDescription{frame(0, 0, 1512, 982), 0, std::nullopt, std::nullopt}));
}

TEST_F(ScreensTest, thePrimaryScreenIsFirstAndTheOthersFramesAreUpFromItsBottom) {
    setMonitor(app, "second", {600, 200, 800, 400}, true);
    const auto all = screens();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].frame, frame(600, 0, 800, 400));
    EXPECT_EQ(all[1].frame, frame(0, -382, 1512, 982));
}

TEST_F(ScreensTest, globalPlacesAreDownFromThePrimaryScreensTop) {
    setMonitor(app, "second", {600, 200, 800, 400}, true);
    EXPECT_EQ(screens().size(), 2U);
    EXPECT_EQ(port().screens.space().toGlobal(PixelRect{700, 210, 24, 24}), frame(700, 10, 24, 24));
}

TEST_F(ScreensTest, aScreenThatIsAddedOrRemovedByHandIsNoticed) {
    EXPECT_EQ(screens().size(), 1U);
    setMonitor(app, "second", {600, 200, 800, 400}, false);
    EXPECT_EQ(screens().size(), 2U);
    deleteMonitor(app, "second");
    EXPECT_EQ(screens().size(), 1U);
}

TEST_F(ScreensTest, twoPixelsAPointHalveEverything) {
    scale = 2;
    setCutout({656, 0, 200, 74});
    const auto screen = only();
    EXPECT_EQ(screen.frame, frame(0, 0, 756, 491));
    EXPECT_EQ(screen.safeAreaTop, 37);
    EXPECT_EQ(screen.auxiliaryTopLeftArea, frame(0, 454, 328, 37));
    EXPECT_EQ(screen.auxiliaryTopRightArea, frame(428, 454, 328, 37));
}

TEST_F(ScreensTest, oneAndAHalfPixelsAPointGiveFractionsAndComeBackExactly) {
    scale = 1.5;
    setCutout({655, 0, 201, 55});
    const auto screen = only();
    EXPECT_EQ(screen.frame, frame(0, 0, 1008, 982 / 1.5));
    EXPECT_DOUBLE_EQ(screen.safeAreaTop, 55 / 1.5);
    ASSERT_TRUE(screen.auxiliaryTopLeftArea);
    EXPECT_EQ(port().screens.space().toPixels(*screen.auxiliaryTopLeftArea),
              (PixelRect{0, 0, 655, 55}));
}

TEST_F(ScreensTest, aCutoutIsTheInsetAndTheAreasBesideIt) {
    setCutout({656, 0, 200, 37});
    const auto screen = only();
    EXPECT_EQ(screen.safeAreaTop, 37);
    EXPECT_EQ(screen.auxiliaryTopLeftArea, frame(0, 945, 656, 37));
    EXPECT_EQ(screen.auxiliaryTopRightArea, frame(856, 945, 656, 37));
}

TEST_F(ScreensTest, aCutoutThatIsSetChangedAndDeletedIsFollowed) {
    EXPECT_EQ(only().safeAreaTop, 0);
    setCutout({656, 0, 200, 37});
    EXPECT_EQ(only().safeAreaTop, 37);
    setCutout({700, 0, 100, 32});
    EXPECT_EQ(only().auxiliaryTopLeftArea, frame(0, 950, 700, 32));
    app.remove(app.root(), "_ORRIVANE_DISPLAY_CUTOUT");
    EXPECT_EQ(only(), (ScreenDescription{frame(0, 0, 1512, 982), 0, std::nullopt, std::nullopt}));
}

TEST_F(ScreensTest, everyScreenHasTheCutoutThatLiesInIt) {
    setMonitor(app, "lower", {0, 500, 1512, 482}, false);
    setMonitor(app, "upper", {0, 0, 1512, 500}, true, true);
    setCutout({656, 500, 200, 37, 700, 0, 100, 30});
    const auto all = screens();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].safeAreaTop, 30);
    EXPECT_EQ(all[1].safeAreaTop, 37);
    EXPECT_EQ(all[1].auxiliaryTopRightArea, frame(856, -37, 656, 37));
}

struct Nonsense {
    const char* what;
    std::vector<std::uint32_t> numbers;

    friend std::ostream& operator<<(std::ostream& out, const Nonsense& example) {
        return out << example.what;
    }
};
class MalformedCutoutTest : public ScreensTest, public ::testing::WithParamInterface<Nonsense> {};

TEST_P(MalformedCutoutTest, isNoCutout) {
    setCutout(GetParam().numbers);
    const auto screen = only();
    EXPECT_EQ(screen.safeAreaTop, 0);
    EXPECT_FALSE(screen.auxiliaryTopLeftArea);
    EXPECT_FALSE(screen.auxiliaryTopRightArea);
}

constexpr std::uint32_t huge = 0xfffffff0U;
const std::vector<Nonsense> nonsense{
    {"nothing", {}},
    {"tooFewNumbers", {656, 0, 200}},
    {"noWidth", {656, 0, 0, 37}},
    {"noHeight", {656, 0, 200, 0}},
    {"besideTheScreen", {1600, 0, 200, 37}},
    {"belowTheScreen", {656, 2000, 200, 37}},
    {"hugePlace", {huge, huge, 200, 37}},
    {"hugeSize", {0, 0, huge, huge}},
    {"widerThanTheScreen", {0, 0, 1600, 37}},
    {"higherThanTheScreen", {656, 0, 200, 1900}},
    {"halfBesideTheScreen", {1400, 0, 200, 37}},
    {"atTheBottom", {656, 945, 200, 37}},
};
INSTANTIATE_TEST_SUITE_P(Cutouts, MalformedCutoutTest, ::testing::ValuesIn(nonsense),
                         [](const auto& example) { return example.param.what; });

TEST_F(ScreensTest, numbersLeftOverAfterAWholeCutoutAreIgnored) {
    setCutout({656, 0, 200, 37, 1, 2});
    EXPECT_EQ(only().safeAreaTop, 37);
}

TEST_F(ScreensTest, aCutoutOfAnotherTypeIsNone) {
    app.setNumbers(app.root(), "_ORRIVANE_DISPLAY_CUTOUT", {656, 0, 200, 37}, "WINDOW");
    EXPECT_EQ(only().safeAreaTop, 0);
    app.setText(app.root(), "_ORRIVANE_DISPLAY_CUTOUT", "656,0,200,37");
    EXPECT_EQ(only().safeAreaTop, 0);
}

TEST_F(ScreensTest, withoutThePropertyTheUsersFileTellsTheCutout) {
    ASSERT_FALSE(cutoutFile().write({{656, 0}, {200, 37}}));
    EXPECT_EQ(only().auxiliaryTopLeftArea, frame(0, 945, 656, 37));
    setCutout({700, 0, 100, 32});
    EXPECT_EQ(only().auxiliaryTopLeftArea, frame(0, 950, 700, 32));
    app.remove(app.root(), "_ORRIVANE_DISPLAY_CUTOUT");
    EXPECT_EQ(only().safeAreaTop, 37);
}

TEST_F(ScreensTest, theVisibleFrameIsTheWorkAreaInsideTheScreen) {
    EXPECT_EQ(port().screens.visibleFrame(only()), frame(0, 0, 1512, 982));
    app.setNumbers(app.root(), "_NET_WORKAREA", {0, 28, 1512, 900});
    EXPECT_EQ(port().screens.visibleFrame(only()), frame(0, 54, 1512, 900));
    app.setNumbers(app.root(), "_NET_WORKAREA", {0, 28, 4000, 4000});
    EXPECT_EQ(port().screens.visibleFrame(only()), frame(0, 0, 1512, 954));
}

TEST_F(ScreensTest, aWorkAreaThatMakesNoSenseLeavesTheScreen) {
    app.setNumbers(app.root(), "_NET_WORKAREA", {0, 28});
    EXPECT_EQ(port().screens.visibleFrame(only()), frame(0, 0, 1512, 982));
    app.setNumbers(app.root(), "_NET_WORKAREA", {3000, 3000, 10, 10});
    EXPECT_EQ(port().screens.visibleFrame(only()), frame(0, 0, 1512, 982));
}

TEST_F(ScreensTest, theMainScreenIsTheOneWithTheActiveWindow) {
    setMonitor(app, "left", {0, 0, 700, 982}, true, true);
    setMonitor(app, "right", {700, 0, 812, 982}, false);
    ASSERT_EQ(screens().size(), 2U);
    EXPECT_EQ(port().screens.mainScreen(), screens()[0]);
    const auto window = app.create({.area = {900, 100, 300, 200}});
    app.map(window);
    app.setNumbers(app.root(), "_NET_ACTIVE_WINDOW", {window}, "WINDOW");
    settle();
    EXPECT_EQ(port().screens.mainScreen(), screens()[1]);
    app.destroy(window);
    EXPECT_EQ(port().screens.mainScreen(), screens()[0]);
}

TEST_F(ScreensTest, blankedScreensAreADisplayAsleepAndAreTold) {
    std::vector<bool> told;
    const auto blanks = port().screens.onBlank([&](bool blank) { told.push_back(blank); });
    EXPECT_FALSE(port().screens.mainDisplayIsAsleep());
    setBlank(app, true);
    settle();
    EXPECT_TRUE(port().screens.mainDisplayIsAsleep());
    setBlank(app, false);
    settle();
    EXPECT_FALSE(port().screens.mainDisplayIsAsleep());
    EXPECT_EQ(told, (std::vector{true, false}));
}

TEST_F(ScreensTest, screensThatWereBlankBeforeAreAsleepFromTheStart) {
    setBlank(app, true);
    EXPECT_TRUE(port().screens.mainDisplayIsAsleep());
}

/// The full panel of a laptop that the table knows.
class KnownPanelTest : public ScreensTest {
  protected:
    KnownPanelTest()
        : ScreensTest(3024, 1964) {
        scale = 2;
        deviceTree = directory.path() + "/device-tree";
        e2e::writeFile(deviceTree + "/compatible", std::string("apple,j314s\0apple,t6000\0", 24));
    }
};

TEST_F(KnownPanelTest, givesTheInsetAndNoAreas) {
    EXPECT_EQ(only(), (ScreenDescription{frame(0, 0, 1512, 982), 37, std::nullopt, std::nullopt}));
    EXPECT_TRUE(port().screens.knowsOnlyTheInset());
}

TEST_F(KnownPanelTest, givesWayToACutoutThatWasTold) {
    setCutout({1324, 0, 376, 74});
    EXPECT_EQ(only().auxiliaryTopLeftArea, frame(0, 945, 662, 37));
    EXPECT_FALSE(port().screens.knowsOnlyTheInset());
}

TEST_F(KnownPanelTest, isNoneOnAnotherMake) {
    e2e::writeFile(deviceTree + "/compatible", "raspberrypi,4-model-b");
    EXPECT_EQ(only().safeAreaTop, 0);
    EXPECT_FALSE(port().screens.knowsOnlyTheInset());
}

TEST(KnownPanelsTest, theTableNeedsTheMakeAndTheWholePanel) {
    const e2e::TempDirectory folder;
    EXPECT_FALSE(KnownPanels::notchRows(3024, 1964, folder.path()));
    e2e::writeFile(folder.path() + "/compatible", std::string("board\0apple,j413\0", 17));
    EXPECT_EQ(KnownPanels::notchRows(3024, 1964, folder.path()), 74);
    EXPECT_EQ(KnownPanels::notchRows(3456, 2234, folder.path()), 74);
    EXPECT_EQ(KnownPanels::notchRows(2560, 1664, folder.path()), 64);
    EXPECT_EQ(KnownPanels::notchRows(2880, 1864, folder.path()), 64);
    EXPECT_FALSE(KnownPanels::notchRows(3024, 1890, folder.path()));
    e2e::writeFile(folder.path() + "/compatible", "pineapple,one");
    EXPECT_FALSE(KnownPanels::notchRows(3024, 1964, folder.path()));
}

} // namespace
} // namespace orrivane::x11
