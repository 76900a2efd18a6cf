#include <tests/linux/updater/support/FeedUpdaterFixture.h>
#include <tests/support/contracts/UpdaterContract.h>

namespace orrivane {
namespace {

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

INSTANTIATE_TYPED_TEST_SUITE_P(Feed, UpdaterContract, UpdaterWorld);

} // namespace
} // namespace orrivane
