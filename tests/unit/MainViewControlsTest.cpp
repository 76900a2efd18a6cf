#include <Orrivane/AppDelegate.h>

#include <tests/unit/MainViewFixture.h>

#include <limits>

namespace orrivane {
namespace {

using namespace reading;

struct MainViewControlsTest : MainViewFixture {
    [[nodiscard]] const View& text(std::string_view words) const { return only<Text>(root, words); }
};

TEST_F(MainViewControlsTest, theSwitchesShowWhatIsStored) {
    create();
    EXPECT_TRUE(isOn("Menu bar icon"));
    EXPECT_TRUE(isOn("Keep mirroring on the notched screen while external displays are connected"));
    EXPECT_FALSE(isOn("Tighten macOS icon spacing"));
    EXPECT_FALSE(isOn("Launch at login"));
    world.userDefaults.stored = {{"OrrivaneShowStatusItem", false},
                                 {"OrrivaneMirrorOnExternal", false},
                                 {"OrrivaneSqueezeShown", true}};
    shell.loginService.currentStatus = LoginItemStatus::enabled;
    create();
    EXPECT_FALSE(isOn("Menu bar icon"));
    EXPECT_FALSE(
        isOn("Keep mirroring on the notched screen while external displays are connected"));
    EXPECT_TRUE(isOn("Tighten macOS icon spacing"));
    EXPECT_TRUE(isOn("Launch at login"));
    EXPECT_EQ(only<Switch>(root, "Menu bar icon").tooltip,
              "Hide Orrivane's own icon from the menu bar. Reopen the app to get the window back.");
}

TEST_F(MainViewControlsTest, theSwitchesHaveFallbacksThoughNobodyElseRegistersThem) {
    world.userDefaults.fallbacks.clear();
    create();
    EXPECT_TRUE(isOn("Menu bar icon"));
    EXPECT_TRUE(isOn("Keep mirroring on the notched screen while external displays are connected"));
    EXPECT_FALSE(isOn("Tighten macOS icon spacing"));
    EXPECT_FALSE(onlyNode<Disclosure>(root, "Show icon list").isExpanded);
    EXPECT_TRUE(world.userDefaults.stored.empty());
}

TEST_F(MainViewControlsTest, theSqueezeControlsAreThereOnlyWhileItsSwitchIsOn) {
    create();
    EXPECT_FALSE(isShown<Slider>("Spacing"));
    EXPECT_FALSE(isShown<Button>("Apply"));
    world.userDefaults.changeElsewhere("OrrivaneSqueezeShown", true);
    settle();
    EXPECT_TRUE(isShown<Slider>("Spacing"));
    EXPECT_TRUE(isShown<Button>("Apply"));
    EXPECT_TRUE(isShown<Button>("Apply & Restart Menu Bar"));
    EXPECT_TRUE(isShown<Button>("Reset to Default"));
}

TEST_F(MainViewControlsTest, theSliderGoesFrom4To16InWholeSteps) {
    create();
    const auto& slider = onlyNode<Slider>(root, "Spacing");
    EXPECT_EQ(slider.minimum, 4);
    EXPECT_EQ(slider.maximum, 16);
    EXPECT_EQ(slider.step, 1);
    EXPECT_EQ(slider.value, 16);
    EXPECT_EQ(slider.minimumLabel, "Tight");
    EXPECT_EQ(slider.maximumLabel, "Default");
}

TEST_F(MainViewControlsTest, aStoredSpacingBeyondTheSliderLeavesItAtItsEnd) {
    shell.globalPreferences.values = {{"NSStatusItemSpacing", 30}};
    create();
    EXPECT_EQ(onlyNode<Slider>(root, "Spacing").value, 16);
    EXPECT_TRUE(isShown<Text>("At spacing 30"));
    EXPECT_EQ(onlyNode<Text>(root, "Applied: 30").text, "Applied: 30");
}

TEST_F(MainViewControlsTest, anAbsurdStoredSpacingIsShownAndHarmsNothing) {
    for (const auto stored :
         {std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}) {
        shell.globalPreferences.values = {{"NSStatusItemSpacing", stored}};
        createAndAppear();
        EXPECT_TRUE(isShown<Text>("At spacing " + std::to_string(stored)));
        EXPECT_EQ(text("Applied: " + std::to_string(stored)).font, FontRole::caption);
    }
}

TEST_F(MainViewControlsTest, theStatusTellsWhatIsAppliedNotWhereTheSliderStands) {
    shell.globalPreferences.values = {{"NSStatusItemSpacing", 6}};
    createAndAppear();
    view->state().setSliderValue(9);
    settle();
    EXPECT_EQ(text("Applied: 6").isVisible, true);
    shell.globalPreferences.values.clear();
    world.loop.advance(2);
    EXPECT_EQ(text("Applied: system default").isVisible, true);
}

TEST_F(MainViewControlsTest, whereSpacingCannotBeChangedItSaysSo) {
    squeezeLimitation = "This tray has its own spacing.";
    createAndAppear();
    EXPECT_TRUE(isShown<Text>(squeezeLimitation));
    EXPECT_EQ(all<Text>(section("Squeeze")).size(), 4U);
}

TEST_F(MainViewControlsTest, withoutAnUpdateThereIsACheckThatWaitsForTheUpdater) {
    create();
    EXPECT_TRUE(isShown<Button>("Check for Updates…"));
    EXPECT_FALSE(only<Button>(root, "Check for Updates…").isEnabled);
    updates.start();
    shell.updater.setCanCheck(true);
    settle();
    EXPECT_TRUE(only<Button>(root, "Check for Updates…").isEnabled);
    EXPECT_TRUE(isOn("Check automatically"));
}

TEST_F(MainViewControlsTest, anUpdateTakesThePlaceOfTheCheck) {
    create();
    updates.willHandleShowingUpdate(false, "1.4");
    settle();
    EXPECT_EQ(onlyNode<Button>(root, "Update to 1.4…").symbol, "arrow.down.circle.fill");
    EXPECT_TRUE(isShown<Button>("Update to 1.4…"));
    EXPECT_TRUE(only<Button>(root, "Update to 1.4…").isEnabled);
    EXPECT_TRUE(isShown<Text>("Version 1.4 is available"));
    EXPECT_FALSE(isShown<Button>("Check for Updates…"));
    updates.willFinishUpdateSession();
    settle();
    EXPECT_TRUE(isShown<Button>("Check for Updates…"));
}

TEST_F(MainViewControlsTest, dialogsSayWhatTheyDo) {
    create();
    const auto& apply = dialog("Restart the menu bar?");
    EXPECT_EQ(apply.message,
              "Your menu bar icons will briefly flicker while Control Center restarts.");
    ASSERT_EQ(apply.buttons.size(), 2U);
    EXPECT_EQ(apply.buttons[0].title, "Apply & Restart");
    EXPECT_EQ(apply.buttons[1].title, "Cancel");
    EXPECT_EQ(apply.buttons[1].role, DialogButtonRole::cancel);
    const auto& reset = dialog("Reset spacing to system default?");
    EXPECT_EQ(reset.message,
              "Restarting applies the change immediately; your menu bar icons will briefly flicker "
              "while Control Center restarts. Without a restart, the default returns at next "
              "login.");
    ASSERT_EQ(reset.buttons.size(), 3U);
    EXPECT_EQ(reset.buttons[0].title, "Reset & Restart Menu Bar");
    EXPECT_EQ(reset.buttons[1].title, "Reset Without Restart");
    EXPECT_EQ(reset.buttons[2].title, "Cancel");
    EXPECT_EQ(reset.buttons[2].role, DialogButtonRole::cancel);
    EXPECT_FALSE(apply.isPresented);
    EXPECT_FALSE(reset.isPresented);
}

TEST_F(MainViewControlsTest, sharesItsKeyForTheStatusItemWithTheDelegate) {
    EXPECT_EQ(MainView::showStatusItemKey, AppDelegate::showStatusItemKey);
}

} // namespace
} // namespace orrivane
