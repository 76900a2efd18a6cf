#include <Orrivane/StripWindow.h>

#include <tests/support/ScriptedPlatform.h>

#include <gtest/gtest.h>

#include <array>

namespace orrivane {
namespace {

constexpr std::array widths{22.0, 30.0, 18.0};
const NotchInfo notch{1512, 0, 37, 700, 850};

std::vector<StripItem> items() {
    std::vector<StripItem> result;
    for (std::uint32_t i = 0; i < widths.size(); ++i)
        result.push_back({i + 1, std::nullopt, widths.at(i), "App", [] {}, nullptr});
    return result;
}

struct StripWindowTest : testing::Test {
    ScriptedPlatform world;

    StripWindowTest() { world.screens.list = {ScriptedScreens::notched()}; }
};

TEST_F(StripWindowTest, itsRightEdgeIsSixPointsLeftOfTheNotchAtTheTopOfTheScreen) {
    EXPECT_EQ(StripWindow::frame(widths, notch, world.screens.list), (Rect{{624, 945}, {70, 37}}));
}

TEST_F(StripWindowTest, ofTwoScreensTheNotchedOneGivesTheTop) {
    auto second = ScriptedScreens::notched();
    second.frame.origin.y = 500;
    EXPECT_EQ(
        StripWindow::frame(widths, notch, std::vector{ScriptedScreens::plain(), second}).origin.y,
        1445);
}

TEST_F(StripWindowTest, withoutANotchedScreenTheFirstOneGivesTheTop) {
    const std::vector two{ScriptedScreens::plain(), ScriptedScreens::plain({{0, 0}, {800, 600}})};
    EXPECT_EQ(StripWindow::frame(widths, notch, two).origin.y, 1043);
}

TEST_F(StripWindowTest, withoutScreensTheTopIsZero) {
    EXPECT_EQ(StripWindow::frame(widths, notch, {}).origin.y, -37);
}

TEST_F(StripWindowTest, anEmptyRowHasNoWidth) {
    EXPECT_EQ(StripWindow::frame({}, notch, world.screens.list), (Rect{{694, 945}, {0, 37}}));
}

TEST_F(StripWindowTest, thePanelFloatsAboveTheStatusItemsOnEverySpaceAndIsNotShown) {
    const StripWindow window(world.trayPanel, world.screens);
    ASSERT_TRUE(world.trayPanel.configuration);
    const auto& configuration = *world.trayPanel.configuration;
    EXPECT_EQ(configuration.styleMask, 128U);
    EXPECT_TRUE(configuration.deferred);
    EXPECT_TRUE(configuration.floating);
    EXPECT_TRUE(configuration.becomesKeyOnlyIfNeeded);
    EXPECT_EQ(configuration.level, 26);
    EXPECT_EQ(configuration.collectionBehavior, 0x151U);
    EXPECT_TRUE(configuration.clearBackground);
    EXPECT_FALSE(configuration.opaque);
    EXPECT_FALSE(configuration.hasShadow);
    EXPECT_FALSE(configuration.movable);
    EXPECT_FALSE(configuration.hidesOnDeactivate);
    ASSERT_TRUE(world.trayPanel.root);
    EXPECT_TRUE(world.trayPanel.buttons().empty());
    EXPECT_FALSE(world.trayPanel.visible);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.frame(), Rect{});
}

TEST_F(StripWindowTest, showReplacesTheRowThenPlacesThenOrdersFront) {
    StripWindow window(world.trayPanel, world.screens);
    world.journal.clear();
    window.show(items(), notch);
    const auto root = world.journal.firstIndex("panel.setRoot");
    const auto frame = world.journal.firstIndex("panel.setFrame");
    const auto front = world.journal.firstIndex("panel.orderFrontRegardless");
    ASSERT_TRUE(root && frame && front);
    EXPECT_LT(root, frame);
    EXPECT_LT(frame, front);
    EXPECT_EQ(world.trayPanel.buttons().size(), 3U);
    EXPECT_EQ(world.trayPanel.buttons()[0].label.size.height, 37);
    EXPECT_EQ(world.trayPanel.frame, (Rect{{624, 945}, {70, 37}}));
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.frame(), world.trayPanel.frame);
}

TEST_F(StripWindowTest, aHiddenWindowHasTheZeroFrameUntilItIsShownAgain) {
    StripWindow window(world.trayPanel, world.screens);
    window.show(items(), notch);
    window.hide();
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(world.trayPanel.visible);
    EXPECT_EQ(window.frame(), Rect{});
    window.show(items(), notch);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.frame(), (Rect{{624, 945}, {70, 37}}));
    EXPECT_EQ(world.trayPanel.creations, 1);
}

} // namespace
} // namespace orrivane
