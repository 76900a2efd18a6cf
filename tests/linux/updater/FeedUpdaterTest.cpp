#include <linux/updater/FeedUpdater.h>

#include <linux/updater/UpdateMemory.h>
#include <tests/linux/updater/support/ScriptedReleases.h>
#include <tests/support/ScriptedLog.h>
#include <tests/support/VirtualLoop.h>
#include <tests/support/contracts/UpdaterContract.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

constexpr double day = FeedUpdater::checkInterval;

struct World {
    QTemporaryDir folder;
    VirtualLoop loop;
    ScriptedReleases releases;
    ScriptedPresenter window;
    UpdateMemory memory{folder.filePath("updates").toStdString()};
    ScriptedLog log;
    std::vector<std::string> opened;
    bool opens = true;
    FeedUpdater body{{loop, releases, window, memory, log}, "1.0", [this](const std::string& path) {
                         opened.push_back(path);
                         return opens;
                     }};

    World() { loop.setNow(1.7e9); }

    Updater& updater() { return body; }
    bool changeCanCheck() {
        if (body.canCheckForUpdates())
            body.checkForUpdates();
        else
            window.close();
        return true;
    }
    bool findScheduledUpdate(const std::string& version) {
        body.setAutomaticallyChecksForUpdates(true);
        loop.advance(FeedUpdater::firstLook);
        releases.offer(version);
        body.checkForUpdates();
        window.press("Remind Me Later");
        return true;
    }
    bool pumpUntil(const std::function<bool()>& holds) {
        loop.runUntilIdle();
        return holds();
    }
};

struct Delegate : UpdaterDelegate {
    bool gentle = true;
    std::vector<std::string> calls;

    bool supportsGentleScheduledUpdateReminders() override { return gentle; }
    bool shouldHandleShowingScheduledUpdate(bool focus) override {
        calls.emplace_back(focus ? "should, focus" : "should, no focus");
        return focus;
    }
    void willHandleShowingUpdate(bool handled, const std::string& version) override {
        calls.push_back((handled ? "updater shows " : "program shows ") + version);
    }
    void didReceiveUserAttention() override { calls.emplace_back("attention"); }
    void willFinishUpdateSession() override { calls.emplace_back("finish"); }
};

struct FeedUpdaterTest : ::testing::Test, World {
    Delegate delegate;
    using Calls = std::vector<std::string>;

    void SetUp() override { body.create(delegate); }

    /// A scheduled check that found `version`.
    void announce(const std::string& version) {
        body.setAutomaticallyChecksForUpdates(true);
        loop.advance(FeedUpdater::firstLook);
        ASSERT_EQ(releases.checks.size(), 1U);
        releases.offer(version);
    }
    void offer(const std::string& version) {
        body.checkForUpdates();
        releases.offer(version);
    }
    std::string headline() const { return window.page ? window.page->headline : "no window"; }
};

TEST_F(FeedUpdaterTest, withoutASourceItExistsAndCannotCheck) {
    releases.usable = false;
    EXPECT_FALSE(body.canCheckForUpdates());
    memory.setChecksAutomatically(true);
    EXPECT_FALSE(body.automaticallyChecksForUpdates());
    body.setAutomaticallyChecksForUpdates(true);
    body.checkForUpdates();
    loop.advance(2 * day);
    EXPECT_TRUE(releases.checks.empty());
    EXPECT_EQ(headline(), "no window");
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(FeedUpdaterTest, nothingIsCheckedBeforeTheUserAllowsIt) {
    loop.advance(3 * day);
    EXPECT_TRUE(releases.checks.empty());
    EXPECT_EQ(loop.timerCount(), 0U);
    body.setAutomaticallyChecksForUpdates(true);
    loop.advance(FeedUpdater::firstLook);
    EXPECT_EQ(releases.checks.size(), 1U);
}

TEST_F(FeedUpdaterTest, automaticChecksComeOnceADay) {
    body.setAutomaticallyChecksForUpdates(true);
    for (int check = 1; check <= 4; ++check) {
        loop.advance(check == 1 ? FeedUpdater::firstLook : day + FeedUpdater::lookInterval);
        ASSERT_EQ(releases.checks.size(), static_cast<std::size_t>(check));
        releases.answerCheck({});
        loop.advance(day / 2);
        ASSERT_EQ(releases.checks.size(), static_cast<std::size_t>(check));
    }
    EXPECT_EQ(headline(), "no window");
    body.setAutomaticallyChecksForUpdates(false);
    loop.advance(3 * day);
    EXPECT_EQ(releases.checks.size(), 4U);
}

TEST_F(FeedUpdaterTest, aCheckOfAnEarlierRunCounts) {
    EXPECT_FALSE(FeedUpdater::isDue(1000, 1000 + day - 1));
    EXPECT_TRUE(FeedUpdater::isDue(1000, 1000 + day));
    EXPECT_TRUE(FeedUpdater::isDue(2000, 1000)) << "the clock was set back";
    memory.setLastCheck(loop.now() - 60);
    body.setAutomaticallyChecksForUpdates(true);
    loop.advance(day / 2);
    EXPECT_TRUE(releases.checks.empty());
}

TEST_F(FeedUpdaterTest, aScheduledFindIsLeftToTheProgramWithoutFocus) {
    announce("2.0");
    EXPECT_EQ(headline(), "no window");
    EXPECT_EQ(delegate.calls, (Calls{"should, no focus", "program shows 2.0"}));
    EXPECT_TRUE(body.canCheckForUpdates());
    body.checkForUpdates();
    EXPECT_EQ(headline(), "A new version of Orrivane is available!");
    EXPECT_EQ(delegate.calls.back(), "attention");
    EXPECT_EQ(releases.checks.size(), 1U) << "what was found is shown, not looked for again";
    window.close();
    EXPECT_EQ(delegate.calls.back(), "finish");
    EXPECT_EQ(headline(), "no window");
}

TEST_F(FeedUpdaterTest, aScheduledFindIsShownWithFocus) {
    window.focused = true;
    announce("2.0");
    EXPECT_EQ(headline(), "A new version of Orrivane is available!");
    EXPECT_EQ(delegate.calls, (Calls{"should, focus", "updater shows 2.0"}));
}

TEST_F(FeedUpdaterTest, aProgramThatAnnouncesNothingLeavesItToTheUpdater) {
    delegate.gentle = false;
    announce("2.0");
    EXPECT_EQ(headline(), "A new version of Orrivane is available!");
    EXPECT_EQ(delegate.calls, (Calls{"updater shows 2.0"}));
}

TEST_F(FeedUpdaterTest, anotherScheduledFindReplacesTheAnnouncedOne) {
    announce("2.0");
    loop.advance(day + FeedUpdater::lookInterval);
    ASSERT_EQ(releases.checks.size(), 2U);
    releases.offer("2.1");
    EXPECT_EQ(delegate.calls.back(), "program shows 2.1");
    body.checkForUpdates();
    ASSERT_TRUE(window.page);
    EXPECT_NE(window.page->text.find("2.1"), std::string::npos);
}

TEST_F(FeedUpdaterTest, aFailedScheduledCheckIsLoggedAndTriedAgainAndHidesNothing) {
    announce("2.0");
    loop.advance(day + FeedUpdater::lookInterval);
    releases.answerCheck({std::nullopt, "The server is away."});
    EXPECT_EQ(headline(), "no window");
    ASSERT_EQ(log.lines.size(), 1U);
    EXPECT_NE(log.lines[0].find("The server is away."), std::string::npos);
    EXPECT_NE(delegate.calls.back(), "finish");
    loop.advance(FeedUpdater::lookInterval + FeedUpdater::lookTolerance);
    EXPECT_EQ(releases.checks.size(), 3U);
}

TEST_F(FeedUpdaterTest, aWithdrawnReleaseIsAnnouncedNoMore) {
    announce("2.0");
    loop.advance(day + FeedUpdater::lookInterval);
    releases.answerCheck({});
    EXPECT_EQ(delegate.calls.back(), "finish");
}

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

INSTANTIATE_TYPED_TEST_SUITE_P(Feed, UpdaterContract, World);

} // namespace
} // namespace orrivane
