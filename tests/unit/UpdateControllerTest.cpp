#include <Orrivane/NotificationName.h>
#include <Orrivane/UpdateController.h>
#include <Orrivane/support/NotificationCenter.h>

#include <tests/support/ScriptedUpdater.h>
#include <tests/support/ScriptedWorkspace.h>
#include <tests/support/VirtualLoop.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {
namespace {

using Calls = std::vector<std::string>;
using Version = std::optional<std::string>;

struct UpdateControllerTest : testing::Test {
    CallJournal journal;
    VirtualLoop loop;
    ScriptedUpdater updater{journal};
    ScriptedWorkspace workspace{journal};
    NotificationCenter notifications;
    std::unique_ptr<UpdateController> controller =
        std::make_unique<UpdateController>(updater, workspace, loop, notifications);

    int posts = 0;
    std::vector<Version> versionsWhenPosted;
    Subscription posted = notifications.addObserver(
        NotificationName::updateAvailabilityChanged, [this](const UserInfo&) {
            ++posts;
            versionsWhenPosted.push_back(controller->availableVersion());
        });

    void announce(const std::string& version) {
        controller->willHandleShowingUpdate(false, version);
    }
};

TEST_F(UpdateControllerTest, beforeTheStartThereIsNoUpdaterAndNothingToTell) {
    EXPECT_EQ(updater.creations, 0);
    EXPECT_EQ(controller->availableVersion(), std::nullopt);
    EXPECT_FALSE(controller->canCheckForUpdates());
    EXPECT_FALSE(controller->automaticallyChecksForUpdates()) << "whatever the updater has stored";
}

TEST_F(UpdateControllerTest, startingTwiceCreatesOneUpdaterAndOneObservation) {
    controller->start();
    controller->start();
    EXPECT_EQ(updater.creations, 1);
    EXPECT_EQ(updater.observerCount(), 1U);
    EXPECT_EQ(updater.delegate, controller.get());
    EXPECT_EQ(workspace.activations, 0);
}

TEST_F(UpdateControllerTest, aCheckBeforeTheStartCreatesTheUpdaterActivatesAndChecks) {
    controller->checkForUpdates();
    EXPECT_EQ(journal.calls(), (Calls{"createUpdater", "activate", "checkForUpdates"}));
    controller->start();
    controller->checkForUpdates();
    EXPECT_EQ(updater.creations, 1);
    EXPECT_EQ(updater.observerCount(), 1U);
    EXPECT_EQ(updater.checks, 2);
}

// Whether a check can be started.

TEST_F(UpdateControllerTest, whatHoldsAtTheStartArrivesOnALaterTurn) {
    updater.setCanCheck(true);
    controller->start();
    EXPECT_FALSE(controller->canCheckForUpdates());
    loop.runUntilIdle();
    EXPECT_TRUE(controller->canCheckForUpdates());
}

TEST_F(UpdateControllerTest, everyChangeIsFollowedInItsOrder) {
    controller->start();
    loop.runUntilIdle();
    std::vector<bool> seenBefore;
    const auto observer =
        controller->observe([&] { seenBefore.push_back(controller->canCheckForUpdates()); });
    updater.setCanCheck(true);
    updater.setCanCheck(false);
    updater.setCanCheck(true);
    EXPECT_FALSE(controller->canCheckForUpdates());
    loop.runUntilIdle();
    EXPECT_EQ(seenBefore, (std::vector<bool>{false, true, false})) << "announced before it holds";
    EXPECT_TRUE(controller->canCheckForUpdates());
}

TEST_F(UpdateControllerTest, thatItStillCannotCheckIsAnnouncedToo) {
    int announcements = 0;
    const auto observer = controller->observe([&] { ++announcements; });
    controller->start();
    loop.runUntilIdle();
    EXPECT_EQ(announcements, 1);
    EXPECT_FALSE(controller->canCheckForUpdates());
}

TEST_F(UpdateControllerTest, anUpdaterWithoutSettingsExistsAndCannotCheck) {
    controller->start();
    loop.runUntilIdle();
    EXPECT_EQ(updater.creations, 1);
    EXPECT_FALSE(controller->canCheckForUpdates());
}

TEST_F(UpdateControllerTest, aChangeOnItsWayToADeadControllerIsDropped) {
    controller->start();
    updater.setCanCheck(true);
    EXPECT_EQ(loop.pendingPosts(), 2U);
    controller.reset();
    EXPECT_EQ(updater.observerCount(), 0U);
    loop.runUntilIdle();
    EXPECT_EQ(loop.pendingPosts(), 0U);
}

// The updater's own setting.

TEST_F(UpdateControllerTest, theSettingIsTheUpdatersOwnOnceItExists) {
    controller->start();
    EXPECT_TRUE(controller->automaticallyChecksForUpdates());
    updater.automaticChecks = false;
    EXPECT_FALSE(controller->automaticallyChecksForUpdates());
}

TEST_F(UpdateControllerTest, aWrittenSettingIsAnnouncedBeforeItHolds) {
    controller->start();
    std::optional<bool> seen;
    const auto observer =
        controller->observe([&] { seen = controller->automaticallyChecksForUpdates(); });
    controller->setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(seen, true);
    EXPECT_FALSE(controller->automaticallyChecksForUpdates());
    EXPECT_FALSE(updater.automaticChecks);
}

TEST_F(UpdateControllerTest, aSettingWrittenBeforeTheStartIsLostButAnnounced) {
    int announcements = 0;
    const auto observer = controller->observe([&] { ++announcements; });
    controller->setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(announcements, 1);
    EXPECT_TRUE(updater.automaticChecks) << "never reached the updater";
    controller->start();
    EXPECT_TRUE(controller->automaticallyChecksForUpdates());
    EXPECT_EQ(journal.count("setAutomaticChecks"), 0U);
}

// Gentle reminders.

TEST_F(UpdateControllerTest, theProgramTakesPartInGentleReminders) {
    EXPECT_TRUE(controller->supportsGentleScheduledUpdateReminders());
}

TEST_F(UpdateControllerTest, theUpdaterShowsAScheduledUpdateOnlyInImmediateFocus) {
    EXPECT_TRUE(controller->shouldHandleShowingScheduledUpdate(true));
    EXPECT_FALSE(controller->shouldHandleShowingScheduledUpdate(false));
}

TEST_F(UpdateControllerTest, anUpdateThatTheUpdaterShowsItselfIsNotAnnounced) {
    controller->willHandleShowingUpdate(true, "2.0");
    EXPECT_EQ(controller->availableVersion(), std::nullopt);
    announce("1.9");
    controller->willHandleShowingUpdate(true, "2.0");
    EXPECT_EQ(controller->availableVersion(), "1.9");
    EXPECT_EQ(posts, 1);
}

TEST_F(UpdateControllerTest, anUpdateLeftToTheProgramIsRememberedAndPostedOnce) {
    announce("2.0");
    EXPECT_EQ(controller->availableVersion(), "2.0");
    announce("2.0");
    EXPECT_EQ(posts, 1);
    controller->didReceiveUserAttention();
    EXPECT_EQ(controller->availableVersion(), std::nullopt);
    EXPECT_EQ(posts, 2);
    controller->willFinishUpdateSession();
    EXPECT_EQ(posts, 2) << "none already";
    EXPECT_EQ(versionsWhenPosted, (std::vector<Version>{"2.0", std::nullopt}));
}

TEST_F(UpdateControllerTest, anotherVersionReplacesTheFirstAndIsPosted) {
    announce("2.0");
    announce("2.1");
    EXPECT_EQ(controller->availableVersion(), "2.1");
    EXPECT_EQ(posts, 2);
}

TEST_F(UpdateControllerTest, theChangeIsPostedWithTheControllerAsItsObject) {
    int ofController = 0;
    int ofSomethingElse = 0;
    const auto name = NotificationName::updateAvailabilityChanged;
    const auto mine =
        notifications.addObserver(name, [&](const UserInfo&) { ++ofController; }, controller.get());
    const auto others =
        notifications.addObserver(name, [&](const UserInfo&) { ++ofSomethingElse; }, &updater);
    announce("2.0");
    EXPECT_EQ(ofController, 1);
    EXPECT_EQ(ofSomethingElse, 0);
}

TEST_F(UpdateControllerTest, theChangeIsPostedUnderTheNameThatIsPublished) {
    int heard = 0;
    const auto observer = notifications.addObserver("QuenmarUpdateAvailabilityChanged",
                                                    [&](const UserInfo&) { ++heard; });
    announce("2.0");
    EXPECT_EQ(heard, 1);
}

TEST_F(UpdateControllerTest, anEmptyVersionIsAVersion) {
    announce("");
    EXPECT_EQ(controller->availableVersion(), "");
    EXPECT_EQ(posts, 1);
}

TEST_F(UpdateControllerTest, takingBackWhatIsNotAnnouncedPostsNothing) {
    controller->didReceiveUserAttention();
    controller->willFinishUpdateSession();
    EXPECT_EQ(posts, 0);
    announce("2.0");
    controller->didReceiveUserAttention();
    controller->willFinishUpdateSession();
    EXPECT_EQ(posts, 2);
}

TEST_F(UpdateControllerTest, theEndOfTheSessionTakesTheAnnouncementBack) {
    announce("2.0");
    controller->willFinishUpdateSession();
    EXPECT_EQ(controller->availableVersion(), std::nullopt);
    EXPECT_EQ(posts, 2);
}

TEST_F(UpdateControllerTest, everyWriteIsAnnouncedBeforeItHoldsAlsoOfAnEqualVersion) {
    std::vector<Version> seen;
    const auto observer =
        controller->observe([&] { seen.push_back(controller->availableVersion()); });
    announce("2.0");
    announce("2.0");
    controller->willFinishUpdateSession();
    EXPECT_EQ(seen, (std::vector<Version>{std::nullopt, "2.0", "2.0"}));
}

TEST_F(UpdateControllerTest, aWholeReminderRunsFromNoneToTheVersionAndBack) {
    controller->start();
    updater.findScheduledUpdate("3.0");
    EXPECT_EQ(versionsWhenPosted, (std::vector<Version>{"3.0", std::nullopt}));
    updater.findScheduledUpdate("3.0", true);
    EXPECT_EQ(posts, 2) << "the updater showed it";
}

} // namespace
} // namespace orrivane
