#include <tests/linux/updater/support/FeedUpdaterFixture.h>

namespace orrivane {
namespace {

TEST_F(FeedUpdaterTest, aCheckTheUserAskedForShowsItsCourse) {
    body.checkForUpdates();
    EXPECT_EQ(headline(), "Checking for updates…");
    EXPECT_TRUE(window.page->isBusy);
    EXPECT_FALSE(body.canCheckForUpdates());
    releases.answerCheck({});
    EXPECT_EQ(headline(), "You're up to date!");
    EXPECT_EQ(window.page->text, "Orrivane 1.0 is currently the newest version available.");
    EXPECT_EQ(memory.lastCheck(), loop.now());
    EXPECT_TRUE(body.canCheckForUpdates());
    body.checkForUpdates();
    EXPECT_EQ(window.broughtForward, 1);
    window.press("OK");
    EXPECT_EQ(headline(), "no window");
    EXPECT_EQ(delegate.calls, Calls{"finish"});
}

TEST_F(FeedUpdaterTest, aCheckThatIsCancelledEnds) {
    body.checkForUpdates();
    EXPECT_EQ(releases.running, 1);
    window.press("Cancel");
    EXPECT_EQ(releases.running, 0);
    EXPECT_EQ(headline(), "no window");
    EXPECT_TRUE(body.canCheckForUpdates());
    EXPECT_EQ(memory.lastCheck(), 0);
}

TEST_F(FeedUpdaterTest, aProblemIsShownAsItIs) {
    body.checkForUpdates();
    releases.answerCheck({std::nullopt, "The server is away."});
    EXPECT_EQ(headline(), "The update did not work");
    EXPECT_EQ(window.page->text, "The server is away.");
    EXPECT_EQ(memory.lastCheck(), 0) << "that was no answer";
}

TEST_F(FeedUpdaterTest, askingTakesThePlaceOfACheckThatRunsQuietly) {
    body.setAutomaticallyChecksForUpdates(true);
    loop.advance(FeedUpdater::firstLook);
    EXPECT_TRUE(body.canCheckForUpdates());
    body.checkForUpdates();
    EXPECT_EQ(releases.checks.size(), 2U);
    EXPECT_EQ(releases.running, 1);
    EXPECT_EQ(headline(), "Checking for updates…");
}

TEST_F(FeedUpdaterTest, theOfferSaysWhatIsNewAndEachOfItsButtonsEndsTheSession) {
    for (const char* label : {"Skip This Version", "Remind Me Later"}) {
        delegate.calls.clear();
        offer("2.0");
        ASSERT_TRUE(window.page);
        EXPECT_EQ(window.page->text, "Orrivane 2.0 is available; you have 1.0. Would you like to "
                                     "download it now (1.3 MB)?");
        ASSERT_TRUE(window.page->notes);
        EXPECT_EQ(window.page->notes->text, "New in 2.0");
        EXPECT_EQ(window.page->buttons.back().label, "Install Update");
        window.press(label);
        EXPECT_EQ(delegate.calls, (Calls{"updater shows 2.0", "attention", "finish"}));
        EXPECT_EQ(headline(), "no window");
    }
    EXPECT_TRUE(releases.downloads.empty());
}

TEST_F(FeedUpdaterTest, aSkippedVersionIsLeftOutByTheScheduleButNotForWhoAsks) {
    offer("2.0");
    window.press("Skip This Version");
    EXPECT_EQ(memory.skippedVersion(), "2.0");
    loop.setNow(loop.now() + 2 * day);
    body.setAutomaticallyChecksForUpdates(true);
    loop.advance(FeedUpdater::firstLook);
    EXPECT_EQ(releases.checks.back(), "2.0");
    releases.answerCheck({});
    body.checkForUpdates();
    EXPECT_EQ(releases.checks.back(), "");
}

TEST_F(FeedUpdaterTest, remindingLaterSkipsNothing) {
    offer("2.0");
    window.close();
    EXPECT_EQ(memory.skippedVersion(), "");
}

TEST_F(FeedUpdaterTest, installingHandsTheVerifiedFileToTheInstaller) {
    offer("2.0");
    window.press("Install Update");
    EXPECT_EQ(headline(), "Downloading Orrivane 2.0…");
    EXPECT_FALSE(body.canCheckForUpdates());
    releases.progress(0.25);
    EXPECT_EQ(window.progress, 0.25);
    EXPECT_TRUE(opened.empty());
    releases.answerDownload({"/cache/orrivane_2.0.deb", std::nullopt});
    EXPECT_EQ(opened, Calls{"/cache/orrivane_2.0.deb"});
    EXPECT_EQ(headline(), "Orrivane 2.0 is downloaded and verified");
    window.press("OK");
    EXPECT_EQ(delegate.calls.back(), "finish");
    EXPECT_TRUE(body.canCheckForUpdates());
}

TEST_F(FeedUpdaterTest, withoutAnInstallerTheUserIsToldWhatToType) {
    opens = false;
    offer("2.0");
    window.press("Install Update");
    releases.answerDownload({"/cache/orrivane_2.0.deb", std::nullopt});
    EXPECT_NE(window.page->text.find("no installer"), std::string::npos);
    EXPECT_NE(window.page->text.find("sudo apt install /cache/orrivane_2.0.deb"),
              std::string::npos);
}

TEST_F(FeedUpdaterTest, aDownloadThatFailsOrIsCancelledOpensNothing) {
    offer("2.0");
    window.press("Install Update");
    releases.answerDownload({{}, "The file is not signed."});
    EXPECT_EQ(headline(), "The update did not work");
    window.press("OK");
    offer("2.0");
    window.press("Install Update");
    window.close();
    EXPECT_EQ(headline(), "no window");
    EXPECT_EQ(releases.running, 0);
    EXPECT_TRUE(opened.empty());
    EXPECT_EQ(delegate.calls.back(), "finish");
}

TEST_F(FeedUpdaterTest, theScheduleLeavesAnOpenWindowAlone) {
    body.setAutomaticallyChecksForUpdates(true);
    offer("2.0");
    memory.setLastCheck(0);
    loop.advance(3 * day);
    EXPECT_EQ(releases.checks.size(), 1U);
}

} // namespace
} // namespace orrivane
