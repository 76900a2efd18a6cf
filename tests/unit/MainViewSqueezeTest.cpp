#include <tests/unit/MainViewFixture.h>

#include <csignal>
#include <limits>

namespace orrivane {
namespace {

using namespace reading;
using Values = ScriptedGlobalPreferences::Values;

constexpr auto applyTitle = "Restart the menu bar?";
constexpr auto resetTitle = "Reset spacing to system default?";
const Values stored6{{"NSStatusItemSpacing", 6}, {"NSStatusItemSelectionPadding", 4}};

struct MainViewSqueezeTest : MainViewFixture {
    std::vector<std::string> after(std::size_t start) {
        const auto& calls = world.journal.calls();
        return {calls.begin() + static_cast<std::ptrdiff_t>(start), calls.end()};
    }
    [[nodiscard]] std::size_t restarts() const { return shell.processLauncher.launches.size(); }
    void slide(double to) {
        const auto changed = onlyNode<Slider>(root, "Spacing").changed.run;
        changed(to);
        settle();
    }
};

TEST_F(MainViewSqueezeTest, theSqueezeSwitchIsStored) {
    create();
    flip("Tighten macOS icon spacing", true);
    EXPECT_TRUE(world.userDefaults.stored.at("OrrivaneSqueezeShown"));
    EXPECT_TRUE(isOn("Tighten macOS icon spacing"));
}

TEST_F(MainViewSqueezeTest, theSliderCannotLeaveItsRangeAndMovesInWholeSteps) {
    create();
    for (const auto& [asked, taken] : {std::pair{3.0, 4.0},
                                       {-1e300, 4.0},
                                       {17.0, 16.0},
                                       {std::numeric_limits<double>::infinity(), 16.0},
                                       {8.4, 8.0},
                                       {8.6, 9.0}}) {
        slide(asked);
        EXPECT_EQ(view->state().sliderValue(), taken) << asked;
    }
    slide(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(view->state().sliderValue(), 9);
    EXPECT_EQ(onlyNode<Slider>(root, "Spacing").value, 9);
    EXPECT_TRUE(isShown<Text>("At spacing 9"));
}

TEST_F(MainViewSqueezeTest, applyStoresTheWholeSpacingAndRefreshes) {
    create();
    view->state().setSliderValue(6.9);
    press("Apply");
    EXPECT_EQ(shell.globalPreferences.written, stored6);
    EXPECT_EQ(censuses(), 1U);
    EXPECT_EQ(restarts(), 0U);
    EXPECT_TRUE(only<Text>(root, "Applied: 6").isVisible);
}

TEST_F(MainViewSqueezeTest, applyAndRestartOnlyAsks) {
    create();
    press("Apply & Restart Menu Bar");
    EXPECT_TRUE(dialog(applyTitle).isPresented);
    EXPECT_FALSE(dialog(resetTitle).isPresented);
    world.loop.advance(10);
    EXPECT_TRUE(shell.globalPreferences.written.empty());
    EXPECT_EQ(restarts(), 0U);
}

TEST_F(MainViewSqueezeTest, theConfirmedApplyRestartsTheBarAndWaitsBeforeItRefreshes) {
    create();
    view->state().setSliderValue(6);
    press("Apply & Restart Menu Bar");
    answer(applyTitle, "Apply & Restart");
    EXPECT_FALSE(dialog(applyTitle).isPresented);
    EXPECT_EQ(shell.globalPreferences.written, stored6);
    EXPECT_EQ(shell.processLauncher.launches, (std::vector<ScriptedProcessLauncher::Launch>{
                                                  {"/usr/bin/killall", {"ControlCenter"}}}));
    EXPECT_EQ(censuses(), 0U);
    world.loop.advance(1.49);
    EXPECT_EQ(censuses(), 0U);
    world.loop.advance(0.02);
    EXPECT_EQ(censuses(), 1U);
}

TEST_F(MainViewSqueezeTest, cancellingOrClosingADialogDoesNothing) {
    shell.globalPreferences.values = stored6;
    create();
    press("Apply & Restart Menu Bar");
    answer(applyTitle, "Cancel");
    EXPECT_FALSE(dialog(applyTitle).isPresented);
    press("Apply & Restart Menu Bar");
    const auto closed = dialog(applyTitle).closed.run;
    closed();
    settle();
    EXPECT_FALSE(dialog(applyTitle).isPresented);
    press("Reset to Default");
    answer(resetTitle, "Cancel");
    EXPECT_FALSE(dialog(resetTitle).isPresented);
    press("Reset to Default");
    const auto resetClosed = dialog(resetTitle).closed.run;
    resetClosed();
    settle();
    EXPECT_FALSE(dialog(resetTitle).isPresented);
    world.loop.advance(10);
    EXPECT_EQ(count("setValue"), 0U);
    EXPECT_EQ(restarts(), 0U);
    EXPECT_EQ(censuses(), 0U);
}

TEST_F(MainViewSqueezeTest, resetOnlyAsks) {
    shell.globalPreferences.values = stored6;
    create();
    press("Reset to Default");
    EXPECT_TRUE(dialog(resetTitle).isPresented);
    EXPECT_FALSE(dialog(applyTitle).isPresented);
    EXPECT_EQ(shell.globalPreferences.values, stored6);
}

TEST_F(MainViewSqueezeTest, aResetWithRestartRefreshesAtOnceAndLeavesTheSlider) {
    shell.globalPreferences.values = stored6;
    create();
    press("Reset to Default");
    const auto start = world.journal.calls().size();
    answer(resetTitle, "Reset & Restart Menu Bar");
    EXPECT_FALSE(dialog(resetTitle).isPresented);
    const auto calls = after(start);
    ASSERT_GE(calls.size(), 4U);
    EXPECT_EQ(calls[0], "setValue NSStatusItemSpacing none");
    EXPECT_EQ(calls[1], "setValue NSStatusItemSelectionPadding none");
    EXPECT_EQ(calls[2], "synchronize");
    EXPECT_EQ(calls[3], "launch /usr/bin/killall ControlCenter");
    EXPECT_EQ(censuses(), 1U);
    EXPECT_EQ(world.loop.elapsed(), 0);
    EXPECT_TRUE(only<Text>(root, "Applied: system default").isVisible);
    EXPECT_EQ(view->state().sliderValue(), 6);
}

TEST_F(MainViewSqueezeTest, aRestartThatFailsIsIgnored) {
    shell.globalPreferences.values = stored6;
    shell.processLauncher.succeeds = false;
    create();
    press("Reset to Default");
    answer(resetTitle, "Reset & Restart Menu Bar");
    EXPECT_TRUE(shell.globalPreferences.written.empty());
    EXPECT_EQ(censuses(), 1U);
}

TEST_F(MainViewSqueezeTest, aResetWithoutRestartLeavesTheBarAlone) {
    shell.globalPreferences.values = stored6;
    create();
    press("Reset to Default");
    answer(resetTitle, "Reset Without Restart");
    EXPECT_FALSE(dialog(resetTitle).isPresented);
    EXPECT_TRUE(shell.globalPreferences.values.empty());
    EXPECT_EQ(restarts(), 0U);
    EXPECT_EQ(censuses(), 1U);
}

TEST_F(MainViewSqueezeTest, theFlagOfADialogIsClearedBeforeItsActionRuns) {
    create();
    press("Reset to Default");
    auto shownDuringReset = true;
    observations.push_back(view->state().observe([&] {
        const auto now = view->body();
        for (const auto* each : all<ConfirmationDialog>(now))
            if (std::get<ConfirmationDialog>(each->node).title == resetTitle)
                shownDuringReset = std::get<ConfirmationDialog>(each->node).isPresented;
    }));
    answer(resetTitle, "Reset Without Restart");
    EXPECT_FALSE(shownDuringReset);
}

TEST_F(MainViewSqueezeTest, aTaskThatAButtonBeganRunsToItsEndWithoutTheView) {
    create();
    view->state().setSliderValue(6);
    press("Apply & Restart Menu Bar");
    answer(applyTitle, "Apply & Restart");
    view.reset();
    world.loop.advance(2);
    EXPECT_EQ(censuses(), 1U);
}

using MainViewDeathTest = MainViewSqueezeTest;

TEST_F(MainViewDeathTest, aSliderThatIsNoNumberEndsTheProgram) {
    create();
    view->state().setSliderValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EXIT((void)view->body(), testing::KilledBySignal(SIGABRT), "");
    view->state().setSliderValue(std::numeric_limits<double>::infinity());
    EXPECT_EXIT((void)view->body(), testing::KilledBySignal(SIGABRT), "");
}

} // namespace
} // namespace orrivane
