#include <Orrivane/SqueezeEngine.h>

#include <tests/support/ScriptedGlobalPreferences.h>
#include <tests/support/ScriptedProcessLauncher.h>
#include <tests/support/ScriptedShellPlatform.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

namespace orrivane {
namespace {

using Calls = std::vector<std::string>;

constexpr const char* spacingKey = "NSStatusItemSpacing";
constexpr const char* paddingKey = "NSStatusItemSelectionPadding";

struct SqueezeEngineStoreTest : testing::Test {
    CallJournal journal;
    ScriptedGlobalPreferences preferences{journal};
    ScriptedProcessLauncher launcher{journal};
};

TEST_F(SqueezeEngineStoreTest, anEmptyStateHasNeitherNumber) {
    EXPECT_EQ(SqueezeState{}.spacing, std::nullopt);
    EXPECT_EQ(SqueezeState{}.padding, std::nullopt);
    EXPECT_EQ((SqueezeState{6, 4}), (SqueezeState{6, 4}));
    EXPECT_NE((SqueezeState{6, 4}), (SqueezeState{6, 5}));
    EXPECT_NE((SqueezeState{6, 4}), (SqueezeState{std::nullopt, 4}));
}

TEST_F(SqueezeEngineStoreTest, theSpacingIsReadBeforeThePadding) {
    preferences.values = {{spacingKey, 6}, {paddingKey, 4}};
    EXPECT_EQ(SqueezeEngine::read(preferences), (SqueezeState{6, 4}));
    EXPECT_EQ(journal.calls(),
              (Calls{"copyValue NSStatusItemSpacing", "copyValue NSStatusItemSelectionPadding"}));
}

TEST_F(SqueezeEngineStoreTest, whatIsNotStoredReadsAsAbsentEachForItself) {
    EXPECT_EQ(SqueezeEngine::read(preferences), SqueezeState{});
    preferences.values = {{spacingKey, 0}};
    EXPECT_EQ(SqueezeEngine::read(preferences), (SqueezeState{0, std::nullopt}));
    preferences.values = {{paddingKey, -3}};
    EXPECT_EQ(SqueezeEngine::read(preferences), (SqueezeState{std::nullopt, -3}));
}

TEST_F(SqueezeEngineStoreTest, aStoredTextReadsAsAbsent) {
    preferences.values = {{spacingKey, 6}, {paddingKey, 4}};
    preferences.notNumbers = {spacingKey};
    EXPECT_EQ(SqueezeEngine::read(preferences), (SqueezeState{std::nullopt, 4}));
}

TEST_F(SqueezeEngineStoreTest, applyStoresSpacingThenPaddingThenSynchronises) {
    EXPECT_TRUE(SqueezeEngine::apply(6, preferences));
    EXPECT_EQ(journal.calls(), (Calls{"setValue NSStatusItemSpacing 6",
                                      "setValue NSStatusItemSelectionPadding 4", "synchronize"}));
}

TEST_F(SqueezeEngineStoreTest, theSpacingIsStoredAsGivenAndOnlyThePaddingHasAFloor) {
    const std::vector<SqueezeState> stored = {{6, 4}, {4, 2}, {3, 2}, {16, 14}, {0, 2}, {-40, 2}};
    for (const auto& expected : stored) {
        SqueezeEngine::apply(*expected.spacing, preferences);
        EXPECT_EQ(SqueezeEngine::read(preferences), expected);
        EXPECT_EQ(preferences.written, preferences.values) << "written before apply returns";
    }
}

TEST_F(SqueezeEngineStoreTest, resetRemovesBothAndSynchronises) {
    preferences.values = {{spacingKey, 6}, {paddingKey, 4}, {"Other", 1}};
    EXPECT_TRUE(SqueezeEngine::reset(preferences));
    EXPECT_EQ(journal.calls(),
              (Calls{"setValue NSStatusItemSpacing none",
                     "setValue NSStatusItemSelectionPadding none", "synchronize"}));
    EXPECT_EQ(SqueezeEngine::read(preferences), SqueezeState{});
    EXPECT_EQ(preferences.written, (ScriptedGlobalPreferences::Values{{"Other", 1}}));
}

TEST_F(SqueezeEngineStoreTest, aStoreThatCannotBeWrittenIsReportedByBoth) {
    preferences.synchronizes = false;
    EXPECT_FALSE(SqueezeEngine::apply(6, preferences));
    EXPECT_FALSE(SqueezeEngine::reset(preferences));
}

TEST_F(SqueezeEngineStoreTest, theRestartEndsControlCenterThroughKillall) {
    SqueezeEngine::restartControlCenter(launcher);
    EXPECT_EQ(launcher.launches, (std::vector<ScriptedProcessLauncher::Launch>{
                                     {"/usr/bin/killall", {"ControlCenter"}}}));
}

TEST_F(SqueezeEngineStoreTest, aRestartThatCannotBeLaunchedStaysUnnoticed) {
    launcher.succeeds = false;
    SqueezeEngine::restartControlCenter(launcher);
    EXPECT_EQ(journal.calls(), Calls{"launch /usr/bin/killall ControlCenter"});
}

TEST_F(SqueezeEngineStoreTest, theSystemsOwnSpacingIsTakenToBe16) {
    EXPECT_EQ(SqueezeEngine::systemSpacing, 16);
}

using SqueezeEngineStoreDeathTest = SqueezeEngineStoreTest;

TEST_F(SqueezeEngineStoreDeathTest, applyOfASpacingTooLowToSubtractFromEndsTheProgram) {
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    EXPECT_DEATH(SqueezeEngine::apply(lowest, preferences), "");
    EXPECT_DEATH(SqueezeEngine::apply(lowest + 1, preferences), "");
    EXPECT_TRUE(SqueezeEngine::apply(lowest + 2, preferences));
}

TEST_F(SqueezeEngineStoreDeathTest, applyOfASpacingThatEndsTheProgramStoresNothing) {
    struct Guarded : ScriptedGlobalPreferences {
        void setValue(std::string_view, std::optional<std::int64_t>) override { std::_Exit(0); }
    } guarded;
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    EXPECT_EXIT(SqueezeEngine::apply(lowest, guarded), testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(SqueezeEngine::apply(6, guarded), testing::ExitedWithCode(0), "");
}

/// Ends the program, successfully if the operations without ports went to the installed ones.
[[noreturn]] void useTheInstalledPlatform() {
    ScriptedPlatform desktop;
    ScriptedShellPlatform shell(desktop);
    const auto platform = shell.platform();
    ShellPlatform::install(platform);
    const bool applied = SqueezeEngine::apply(6);
    const bool isRead = SqueezeEngine::read() == SqueezeState{6, 4};
    const bool removed = SqueezeEngine::reset();
    SqueezeEngine::restartControlCenter();
    shell.globalPreferences.synchronizes = false;
    const bool failuresAreTold = !SqueezeEngine::apply(8) && !SqueezeEngine::reset();
    const Calls expected{"setValue NSStatusItemSpacing 6",
                         "setValue NSStatusItemSelectionPadding 4",
                         "synchronize",
                         "copyValue NSStatusItemSpacing",
                         "copyValue NSStatusItemSelectionPadding",
                         "setValue NSStatusItemSpacing none",
                         "setValue NSStatusItemSelectionPadding none",
                         "synchronize",
                         "launch /usr/bin/killall ControlCenter",
                         "setValue NSStatusItemSpacing 8",
                         "setValue NSStatusItemSelectionPadding 6",
                         "synchronize",
                         "setValue NSStatusItemSpacing none",
                         "setValue NSStatusItemSelectionPadding none",
                         "synchronize"};
    const bool went = desktop.journal.calls() == expected;
    std::_Exit(applied && isRead && removed && failuresAreTold && went ? 0 : 1);
}

// In a process of its own, because what was installed stays.
TEST_F(SqueezeEngineStoreDeathTest, withoutPortsTheInstalledOnesAreUsed) {
    EXPECT_EXIT(useTheInstalledPlatform(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace orrivane
