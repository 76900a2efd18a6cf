#include "support/Desk.h"

#include <poll.h>
#include <thread>

namespace orrivane::x11 {
namespace {

/// What reading the tree costs, and what becomes of it when the server does not answer.
class TreeReadingTest : public Desk {
  protected:
    std::uint64_t roundTripsOfFirstRead(int icons) {
        FakeTray host(server.display());
        for (int i = 0; i < icons; ++i)
            host.add(app, {30 * i, 2, 24, 24});
        std::string problem;
        const auto connection = Connection::open(server.display().c_str(), problem);
        WindowTree fresh(*connection);
        EXPECT_TRUE(fresh.update());
        EXPECT_EQ(fresh.icons().size(), static_cast<std::size_t>(icons));
        return fresh.roundTrips();
    }
    [[nodiscard]] bool recovers() {
        return eventually([this] { return tree().update(); });
    }
};

TEST_F(TreeReadingTest, theFirstReadsRoundTripsDoNotGoWithTheNumberOfIcons) {
    const auto few = roundTripsOfFirstRead(1);
    EXPECT_EQ(roundTripsOfFirstRead(30), few);
    EXPECT_LE(few, 9U);
}

TEST_F(TreeReadingTest, theFirstReadsRoundTripsGoWithTheDepth) {
    const auto shallow = roundTripsOfFirstRead(1);
    startTray();
    auto parent = tray->dock();
    for (int i = 0; i < 3; ++i)
        parent = tray->addSocket({0, 0, 24, 24}, parent);
    tray->embed(FakeTray::makeIcon(app, 24, 24), tray->addSocket({0, 0, 24, 24}, parent));
    ASSERT_EQ(icons().size(), 1U);
    EXPECT_EQ(tree().roundTrips(), shallow + 3);
}

TEST_F(TreeReadingTest, aReadWhenNothingChangedSendsNothing) {
    startTray();
    addIcon({1400, 2, 24, 24});
    ASSERT_EQ(port().items.current().size(), 1U);
    const auto before = requestsSent();
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(tree().update());
        EXPECT_EQ(port().items.current().size(), 1U);
        EXPECT_EQ(port().windowList.onscreenWindows().size(), 2U); // the icon and the dock
        EXPECT_EQ(port().screens.screens().size(), 1U);
    }
    EXPECT_EQ(requestsSent(), before + 1);
}

TEST_F(TreeReadingTest, movesAndMapsAreTakenFromTheirEventsAlone) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{icon});
    const auto roundTrips = tree().roundTrips();
    app.unmap(icon);
    app.move(icon, {3, 0, 24, 24});
    EXPECT_EQ(icons(), Windows{icon});
    EXPECT_FALSE(tree().find(icon)->mapped);
    EXPECT_EQ(tree().rootRect(*tree().find(icon)).x, 1403);
    EXPECT_EQ(tree().roundTrips(), roundTrips);
}

TEST_F(TreeReadingTest, aWindowThatDiesBetweenTheEventAndTheReadIsLeftOut) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{icon});
    const auto brief = app.create({});
    app.map(brief);
    settle();
    open().drain(); // the mirror knows the window and has not read it yet
    app.destroy(brief);
    EXPECT_EQ(icons(), Windows{icon});
    EXPECT_EQ(tree().find(brief), nullptr);
}

TEST_F(TreeReadingTest, aWholeTrayThatDiesDuringTheReadIsLeftOut) {
    startTray();
    addIcon({1400, 2, 24, 24});
    port();
    bool died = false;
    open().setQueuedHandler([&] {
        if (!std::exchange(died, true))
            tray->client.leave();
    });
    EXPECT_TRUE(eventually([&] { return died && icons().empty(); }));
    open().setQueuedHandler({});
}

TEST_F(TreeReadingTest, aGrabbedServerMakesAReadFailInBoundedTimeAndTheNextFailAtOnce) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{icon});
    app.map(app.create({}));
    settle();
    app.grab();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(tree().update());
    EXPECT_TRUE(tree().icons().empty());
    const auto first = std::chrono::steady_clock::now();
    EXPECT_LT(first - begin, Connection::answerLimit + std::chrono::seconds(2));
    for (int i = 0; i < 20; ++i)
        EXPECT_FALSE(tree().update());
    EXPECT_LT(std::chrono::steady_clock::now() - first, 10 * Connection::answerLimit);
    app.ungrab();
    EXPECT_TRUE(recovers());
    EXPECT_EQ(icons(), Windows{icon});
}

TEST_F(TreeReadingTest, withoutAnAnswerThereAreNoItemsAndAfterwardsTheyAreBack) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(port().items.current().size(), 1U);
    app.map(app.create({}));
    settle();
    app.grab();
    EXPECT_TRUE(port().windowList.allWindows().empty());
    EXPECT_TRUE(port().windowList.onscreenWindows().empty());
    app.ungrab();
    EXPECT_TRUE(recovers());
    ASSERT_EQ(port().items.current().size(), 1U);
    EXPECT_EQ(port().windowList.allWindows()[0].number, icon);
}

// The grab ends at some moment around the deadline: whatever was answered by then, an update that
// says it succeeded has the whole tree.
TEST_F(TreeReadingTest, aServerThatAnswersJustAtTheDeadlineLeavesNoHoles) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    port();
    for (int round = 0; round < 8; ++round) {
        ASSERT_TRUE(recovers());
        ASSERT_EQ(icons(), Windows{icon});
        app.map(app.create({}));
        settle();
        app.grab();
        std::thread releaser([&, round] {
            const auto moment = Connection::answerLimit + std::chrono::milliseconds(round - 4);
            poll(nullptr, 0, static_cast<int>(moment.count()));
            app.ungrab();
        });
        const bool updated = tree().update();
        const auto found = tree().icons();
        releaser.join();
        EXPECT_EQ(found, updated ? Windows{icon} : Windows{}) << round;
    }
}

TEST_F(TreeReadingTest, whatChangesTheTrayDuringAReadIsReadInTheSameUpdate) {
    startTray();
    addIcon({1400, 2, 24, 24});
    port();
    std::optional<FakeTray> next;
    std::uint32_t icon = 0;
    open().setQueuedHandler([&] {
        if (next)
            return;
        next.emplace(server.display());
        icon = next->add(app, {1300, 2, 24, 24});
    });
    EXPECT_TRUE(tree().update());
    open().setQueuedHandler({});
    ASSERT_TRUE(next);
    EXPECT_EQ(icons(), Windows{icon});
}

TEST_F(TreeReadingTest, aServerThatDiesLeavesAnEmptyTree) {
    startTray();
    addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons().size(), 1U);
    server.process().kill();
    ASSERT_TRUE(e2e::waitFor("the connection is lost", [&] {
        open().drain();
        return open().isLost();
    }));
    EXPECT_FALSE(tree().update());
    EXPECT_TRUE(tree().icons().empty());
}

TEST_F(TreeReadingTest, aBoundingShapeIsFollowed) {
    startTray();
    const auto cover = app.create({.area = {100, 0, 200, 100}});
    app.map(cover);
    icons();
    EXPECT_EQ(tree().find(cover)->bounding, (PixelRect{0, 0, 200, 100}));
    app.shapeBounding(cover, {10, 20, 30, 40});
    icons();
    EXPECT_EQ(tree().find(cover)->bounding, (PixelRect{10, 20, 30, 40}));
    app.unshapeBounding(cover);
    icons();
    EXPECT_EQ(tree().find(cover)->bounding, (PixelRect{0, 0, 200, 100}));
    app.move(cover, {100, 0, 210, 110});
    icons();
    EXPECT_EQ(tree().find(cover)->bounding, (PixelRect{0, 0, 210, 110}));
}

} // namespace
} // namespace orrivane::x11
