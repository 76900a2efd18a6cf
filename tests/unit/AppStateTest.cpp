#include "AppStateFixture.h"

#include <cmath>
#include <limits>

namespace orrivane {
namespace {

using AppStateTest = AppStateFixture;

// A fresh state.

TEST_F(AppStateTest, aFreshStateHasAskedForSpacingPermissionAndLoginItemOnceEach) {
    desktop.journal.clear();
    make();
    EXPECT_EQ(desktop.journal.calls(),
              (Calls{"copyValue NSStatusItemSpacing", "copyValue NSStatusItemSelectionPadding",
                     "preflightAccess", "status"}));
    EXPECT_EQ(desktop.screenCapture.requestCalls, 0) << "nothing prompts";
}

TEST_F(AppStateTest, aFreshStateHasNoCensusAndNoImages) {
    EXPECT_EQ(state->census(), std::nullopt);
    EXPECT_TRUE(state->images().empty());
    EXPECT_FALSE(state->isRefreshing());
}

TEST_F(AppStateTest, theSliderBeginsAtTheStoredSpacingElseAt16) {
    EXPECT_EQ(state->sliderValue(), 16.0);
    EXPECT_EQ(state->squeeze(), SqueezeState{});
    shell.globalPreferences.values = {{spacingKey, 6}, {paddingKey, 4}};
    make();
    EXPECT_EQ(state->sliderValue(), 6.0);
    EXPECT_EQ(state->squeeze(), (SqueezeState{6, 4}));
}

TEST_F(AppStateTest, aStoredPaddingAloneLeavesTheSliderAt16) {
    shell.globalPreferences.values = {{paddingKey, 4}};
    make();
    EXPECT_EQ(state->sliderValue(), 16.0);
    EXPECT_EQ(state->squeeze(), (SqueezeState{std::nullopt, 4}));
}

TEST_F(AppStateTest, aFreshStateShowsPermissionAndLoginItemAsTheyAre) {
    EXPECT_TRUE(state->screenGranted());
    EXPECT_FALSE(state->launchAtLogin());
    desktop.screenCapture.accessGranted = false;
    shell.loginService.currentStatus = LoginItemStatus::enabled;
    make();
    EXPECT_FALSE(state->screenGranted());
    EXPECT_TRUE(state->launchAtLogin());
    shell.loginService.currentStatus = LoginItemStatus::requiresApproval;
    make();
    EXPECT_FALSE(state->launchAtLogin());
}

TEST_F(AppStateTest, everyAssignmentIsAnnouncedBeforeItHoldsAlsoOfAnEqualValue) {
    std::vector<double> before;
    const auto observer = state->observe([&] { before.push_back(state->sliderValue()); });
    state->setSliderValue(8);
    state->setSliderValue(8);
    EXPECT_EQ(before, (std::vector<double>{16, 8}));
    state->setLaunchAtLogin(true);
    EXPECT_EQ(before.size(), 3U);
}

// Icons of the preview.

TEST_F(AppStateTest, withoutACensusThereAreNoPreviewIcons) {
    EXPECT_EQ(state->census(), std::nullopt);
    EXPECT_TRUE(state->previewIcons().empty());
    refresh();
    EXPECT_EQ(state->previewIcons().size(), 2U);
}

TEST_F(AppStateTest, thePreviewHasOneIconForEveryItemInCensusOrderWithItsImageIfThereIsOne) {
    desktop.windowList.clear();
    desktop.screenCapture.windows.clear();
    for (std::uint32_t i = 0; i < 5; ++i) {
        const std::uint32_t id = 30 - i;
        desktop.windowList.add(id, {{900.0 + 40 * i, 0}, {20.0 + i, 37}}, i != 2);
        if (i % 2 == 0)
            desktop.screenCapture.addWindow(id, {20.0 + i, 37});
    }
    refresh();
    const auto icons = state->previewIcons();
    ASSERT_EQ(icons.size(), 5U);
    for (std::uint32_t i = 0; i < 5; ++i) {
        EXPECT_EQ(icons[i].id, 30 - i);
        EXPECT_EQ(icons[i].width, 20.0 + i);
        EXPECT_EQ(icons[i].image.has_value(), i % 2 == 0) << "icon " << i;
    }
    EXPECT_EQ(icons[0].image, state->images().at(30));
}

// Launch at login.

TEST_F(AppStateTest, theLoginSwitchIsAppliedAsItStands) {
    state->setLaunchAtLogin(true);
    EXPECT_EQ(desktop.journal.count("registerItem"), 0U) << "only the switch moved";
    state->toggleLogin();
    EXPECT_EQ(desktop.journal.count("registerItem"), 1U);
    state->setLaunchAtLogin(false);
    state->toggleLogin();
    EXPECT_EQ(desktop.journal.count("unregisterItem"), 1U);
}

TEST_F(AppStateTest, aFailedRegistrationLeavesTheSwitchUntilTheNextState) {
    shell.loginService.registerError = "Operation not permitted";
    state->setLaunchAtLogin(true);
    state->toggleLogin();
    EXPECT_TRUE(state->launchAtLogin());
    EXPECT_EQ(desktop.log.lines,
              Calls{"LoginItem: failed to register login item: Operation not permitted"});
    refresh();
    EXPECT_TRUE(state->launchAtLogin());
    make();
    EXPECT_FALSE(state->launchAtLogin());
}

// The squeeze.

TEST_F(AppStateTest, applyingStoresTheSliderCutTowardsZeroAndRefreshesAtOnce) {
    state->setSliderValue(8.9);
    desktop.journal.clear();
    run(state->applySqueeze(false));
    EXPECT_EQ(calls({"setValue", "synchronize", "launch", "allWindows", "copyValue"}),
              (Calls{"setValue NSStatusItemSpacing 8", "setValue NSStatusItemSelectionPadding 6",
                     "synchronize", "allWindows", "copyValue NSStatusItemSpacing",
                     "copyValue NSStatusItemSelectionPadding"}));
    EXPECT_EQ(state->squeeze(), (SqueezeState{8, 6}));
    EXPECT_EQ(state->sliderValue(), 8.9);
    EXPECT_EQ(desktop.loop.elapsed(), 0);
}

TEST_F(AppStateTest, theSliderIsCutTowardsZeroOnBothSides) {
    for (const auto& [value, spacing] :
         {std::pair{16.7, 16}, std::pair{4.0, 4}, std::pair{-0.9, 0}, std::pair{-3.9, -3}}) {
        state->setSliderValue(value);
        EXPECT_EQ(state->sliderSpacing(), spacing);
    }
}

TEST_F(AppStateTest, applyingWithARestartRefreshesOneAndAHalfSecondsAfterIt) {
    state->setSliderValue(6);
    desktop.journal.clear();
    const auto handle = begin(state->applySqueeze(true));
    desktop.loop.advance(1.499);
    EXPECT_EQ(calls({"setValue", "launch", "allWindows"}),
              (Calls{"setValue NSStatusItemSpacing 6", "setValue NSStatusItemSelectionPadding 4",
                     "launch /usr/bin/killall ControlCenter"}));
    EXPECT_FALSE(state->isRefreshing()) << "the pause is no refresh";
    EXPECT_EQ(state->squeeze(), SqueezeState{});
    desktop.loop.advance(0.001);
    EXPECT_EQ(desktop.journal.count("allWindows"), 1U);
    EXPECT_EQ(state->squeeze(), (SqueezeState{6, 4}));
    EXPECT_FALSE(handle.isRunning());
}

TEST_F(AppStateTest, aRestartThatCannotBeLaunchedIsWaitedForAllTheSame) {
    shell.processLauncher.succeeds = false;
    desktop.journal.clear();
    begin(state->applySqueeze(true));
    desktop.loop.advance(1.4);
    EXPECT_EQ(desktop.journal.count("allWindows"), 0U);
    desktop.loop.advance(0.1);
    EXPECT_EQ(desktop.journal.count("allWindows"), 1U);
}

TEST_F(AppStateTest, aCancelledPauseIsFollowedByTheRefreshAtOnce) {
    state->setSliderValue(6);
    const auto handle = begin(state->applySqueeze(true));
    desktop.loop.advance(0.5);
    handle.cancel();
    desktop.loop.runUntilIdle();
    EXPECT_EQ(state->squeeze(), (SqueezeState{6, 4}));
    EXPECT_NE(state->census(), std::nullopt);
    EXPECT_FALSE(handle.isRunning());
}

TEST_F(AppStateTest, resettingRemovesBothNumbersAndLeavesTheSlider) {
    shell.globalPreferences.values = {{spacingKey, 6}, {paddingKey, 4}};
    make();
    run(state->resetSqueeze(false));
    EXPECT_TRUE(shell.globalPreferences.written.empty());
    EXPECT_EQ(state->squeeze(), SqueezeState{});
    EXPECT_EQ(state->sliderValue(), 6.0);
    EXPECT_TRUE(shell.processLauncher.launches.empty());
}

TEST_F(AppStateTest, resettingWithARestartWaitsToo) {
    desktop.journal.clear();
    begin(state->resetSqueeze(true));
    desktop.loop.advance(1.499);
    EXPECT_EQ(
        calls({"setValue", "synchronize", "launch", "allWindows"}),
        (Calls{"setValue NSStatusItemSpacing none", "setValue NSStatusItemSelectionPadding none",
               "synchronize", "launch /usr/bin/killall ControlCenter"}));
    desktop.loop.advance(0.001);
    EXPECT_EQ(desktop.journal.count("allWindows"), 1U);
}

TEST_F(AppStateTest, aTaskOnceBegunKeepsItsStateAndRunsToItsEnd) {
    const std::weak_ptr<AppState> alive = state;
    state->setSliderValue(6);
    begin(state->applySqueeze(true));
    state.reset();
    desktop.loop.advance(1.0);
    EXPECT_FALSE(alive.expired());
    desktop.journal.clear();
    desktop.loop.advance(0.5);
    EXPECT_EQ(desktop.journal.count("allWindows"), 1U);
    EXPECT_TRUE(alive.expired()) << "nothing holds it after the task";
}

using AppStateDeathTest = AppStateFixture;

TEST_F(AppStateDeathTest, aSliderThatIsNo64BitIntegerEndsTheProgram) {
    for (const double value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity(), 0x1p63, 1e300, -0x1.0000000000001p63}) {
        state->setSliderValue(value);
        EXPECT_DEATH(static_cast<void>(state->sliderSpacing()), "") << value;
    }
    EXPECT_DEATH(run(state->applySqueeze(false)), "");
    state->setSliderValue(std::nextafter(0x1p63, 0));
    EXPECT_EQ(state->sliderSpacing(), 9223372036854774784);
    state->setSliderValue(-0x1p63);
    EXPECT_EQ(state->sliderSpacing(), std::numeric_limits<std::int64_t>::min());
}

} // namespace
} // namespace orrivane
