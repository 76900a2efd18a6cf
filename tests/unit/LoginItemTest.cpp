#include <Orrivane/LoginItem.h>

#include <tests/support/ScriptedLog.h>
#include <tests/support/ScriptedLoginService.h>
#include <tests/support/ScriptedShellPlatform.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace orrivane {
namespace {

using Lines = std::vector<std::string>;

struct LoginItemTest : testing::Test {
    CallJournal journal;
    ScriptedLoginService service{journal};
    ScriptedLog log{journal};

    void set(bool enabled) { LoginItem::setEnabled(enabled, service, log); }
};

TEST_F(LoginItemTest, onlyTheStatusEnabledCountsAsEnabled) {
    for (const auto& [status, enabled] : {std::pair{LoginItemStatus::notRegistered, false},
                                          std::pair{LoginItemStatus::enabled, true},
                                          std::pair{LoginItemStatus::requiresApproval, false},
                                          std::pair{LoginItemStatus::notFound, false}}) {
        service.currentStatus = status;
        EXPECT_EQ(LoginItem::isEnabled(service), enabled) << static_cast<int>(status);
    }
    EXPECT_EQ(static_cast<int>(LoginItemStatus::enabled), 1);
}

TEST_F(LoginItemTest, aRegistrationThatStillRequiresApprovalIsNotEnabled) {
    set(true);
    service.currentStatus = LoginItemStatus::requiresApproval;
    EXPECT_FALSE(LoginItem::isEnabled(service));
}

TEST_F(LoginItemTest, theStatusIsAskedEveryTime) {
    EXPECT_FALSE(LoginItem::isEnabled(service));
    service.currentStatus = LoginItemStatus::enabled;
    EXPECT_TRUE(LoginItem::isEnabled(service));
    EXPECT_EQ(journal.count("status"), 2U);
}

TEST_F(LoginItemTest, enablingRegistersAndDisablingUnregisters) {
    set(true);
    set(false);
    EXPECT_EQ(journal.calls(), (Lines{"registerItem", "unregisterItem"}));
}

TEST_F(LoginItemTest, enablingTwiceGoesToTheServiceTwice) {
    set(true);
    service.registerError = "already registered";
    set(true);
    EXPECT_EQ(journal.count("registerItem"), 2U);
    EXPECT_EQ(log.lines, Lines{"LoginItem: failed to register login item: already registered"});
}

TEST_F(LoginItemTest, aFailureIsOneLineThatNamesTheVerbAndTheSystemsText) {
    service.registerError = "Operation not permitted";
    service.unregisterError = "No such file or directory";
    set(true);
    set(false);
    EXPECT_EQ(log.lines,
              (Lines{"LoginItem: failed to register login item: Operation not permitted",
                     "LoginItem: failed to unregister login item: No such file or directory"}));
}

TEST_F(LoginItemTest, percentSignsInTheSystemsTextAreLoggedAsTheyAre) {
    service.registerError = "100%s of the disk %n is %@ used";
    set(true);
    EXPECT_EQ(log.lines,
              Lines{"LoginItem: failed to register login item: 100%s of the disk %n is %@ used"});
}

TEST_F(LoginItemTest, anErrorWithoutTextIsAFailureAllTheSame) {
    service.unregisterError = "";
    set(false);
    EXPECT_EQ(log.lines, Lines{"LoginItem: failed to unregister login item: "});
}

TEST_F(LoginItemTest, successLogsNothing) {
    set(true);
    set(false);
    EXPECT_TRUE(log.lines.empty());
}

/// Ends the program, successfully if the operations without ports went to the installed ones.
[[noreturn]] void useTheInstalledPlatform() {
    ScriptedPlatform desktop;
    ScriptedShellPlatform shell(desktop);
    const auto platform = desktop.platform();
    const auto shellPlatform = shell.platform();
    Platform::install(platform);
    ShellPlatform::install(shellPlatform);
    const bool before = LoginItem::isEnabled();
    LoginItem::setEnabled(true);
    const bool after = LoginItem::isEnabled();
    shell.loginService.unregisterError = "busy";
    LoginItem::setEnabled(false);
    const Lines expected{"status", "registerItem", "status", "unregisterItem",
                         "log LoginItem: failed to unregister login item: busy"};
    std::_Exit(!before && after && desktop.journal.calls() == expected ? 0 : 1);
}

using LoginItemDeathTest = LoginItemTest;

// In a process of its own, because what was installed stays.
TEST_F(LoginItemDeathTest, withoutPortsTheInstalledOnesAreUsed) {
    EXPECT_EXIT(useTheInstalledPlatform(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace orrivane
