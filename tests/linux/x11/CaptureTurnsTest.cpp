#include "support/CaptureDesk.h"

namespace orrivane::x11 {
namespace {

// When pictures are taken, and what becomes of captures under way.
using CaptureTurnsTest = CaptureDesk;

TEST_F(CaptureTurnsTest, aCoveredIconIsTakenWithoutItsCover) {
    startTray();
    const auto icon = addPainted(pattern());
    XClient other(server.display());
    coverWith(other);
    settle();
    const auto shot = capture(icon, 2 * width, 56);
    loop.runUntilIdle();
    EXPECT_EQ(shot->answers, 0) << "its program has not had the time to draw";
    app.paint(icon, width, height, pattern(7));
    loop.advance(1);
    ASSERT_EQ(shot->answers, 1);
    ASSERT_TRUE(shot->image());
    EXPECT_EQ(halved(*shot->image(), 6), opaque(pattern(7)));
    EXPECT_EQ(halved(*take(icon), 6), opaque(pattern(7)));
}

TEST_F(CaptureTurnsTest, aCoveredIconThatWaitsIsNotSpoiltByAnotherCapture) {
    startTray();
    const auto icon = addPainted(pattern());
    const auto free = addPainted(pattern(3), 1300);
    XClient other(server.display());
    coverWith(other);
    settle();
    const auto covered = capture(icon, 2 * width, 56);
    loop.runUntilIdle();
    const auto second = capture(free, 2 * width, 56);
    loop.runUntilIdle();
    EXPECT_EQ(second->answers, 1);
    app.paint(icon, width, height, pattern(7));
    loop.advance(1);
    ASSERT_TRUE(covered->image());
    EXPECT_EQ(halved(*covered->image(), 6), opaque(pattern(7)));
}

TEST_F(CaptureTurnsTest, aSecondCaptureOfAnIconThatWaitsWaitsToo) {
    startTray();
    const auto icon = addPainted(pattern());
    XClient other(server.display());
    coverWith(other);
    settle();
    const auto first = capture(icon, 2 * width, 56);
    loop.runUntilIdle();
    const auto second = capture(icon, 2 * width, 56);
    loop.runUntilIdle();
    EXPECT_EQ(second->answers, 0);
    app.paint(icon, width, height, pattern(7));
    loop.advance(1);
    ASSERT_TRUE(first->image() && second->image());
    EXPECT_EQ(halved(*first->image(), 6), opaque(pattern(7)));
    EXPECT_EQ(halved(*second->image(), 6), opaque(pattern(7)));
}

TEST_F(CaptureTurnsTest, aCaptureBegunJustBeforeAWaitEndsKeepsTheOthersRedirected) {
    startTray();
    const auto icon = addPainted(pattern());
    XClient other(server.display());
    coverWith(other);
    settle();
    const auto first = capture(icon, 2 * width, 56);
    loop.runUntilIdle();
    app.paint(icon, width, height, pattern(7));
    loop.block(1);
    const auto second = capture(icon, 2 * width, 56); // posted, and the wait is over already
    loop.advance(1);
    ASSERT_TRUE(first->image() && second->image());
    const auto third = capture(icon, 2 * width, 56);
    loop.runUntilIdle();
    ASSERT_EQ(third->answers, 1) << "it was drawn already";
    EXPECT_EQ(halved(*third->image(), 6), opaque(pattern(7)));
}

TEST_F(CaptureTurnsTest, aCoveredIconWithABorderIsTakenInsideIt) {
    startTray();
    const auto icon = addPainted(pattern());
    app.setBorder(icon, 2);
    XClient other(server.display());
    coverWith(other);
    settle();
    const auto shot = capture(icon, 2 * width, 56);
    loop.runUntilIdle();
    app.paint(icon, width, height, pattern(7));
    loop.advance(1);
    ASSERT_TRUE(shot->image());
    EXPECT_EQ(halved(*shot->image(), 10), opaque(pattern(7))); // the border moved it down by 2
}

TEST_F(CaptureTurnsTest, capturesOfOneTurnGoOutTogether) {
    startTray();
    std::vector<std::uint32_t> painted;
    for (int i = 0; i < 12; ++i)
        painted.push_back(addPainted(pattern(static_cast<std::uint32_t>(i)), 1000 + 20 * i));
    settle();
    ASSERT_EQ(port().items.current().size(), painted.size());
    std::vector<std::shared_ptr<Shot>> shots;
    for (const auto icon : painted)
        shots.push_back(capture(icon, 2 * width, 56));
    const auto before = requestsSent();
    std::optional<unsigned> sentAtFirstReply;
    open().setQueuedHandler([&] {
        if (!sentAtFirstReply)
            sentAtFirstReply = requestsSent() - before - 1;
    });
    loop.runUntilIdle();
    open().setQueuedHandler({});
    for (std::size_t i = 0; i < shots.size(); ++i) {
        ASSERT_TRUE(shots[i]->image()) << i;
        EXPECT_EQ(halved(*shots[i]->image(), 6), opaque(pattern(static_cast<std::uint32_t>(i))));
    }
    EXPECT_EQ(sentAtFirstReply, 12U);
}

TEST_F(CaptureTurnsTest, thePermissionIsDecidedOnce) {
    EXPECT_TRUE(port().capture.preflightAccess());
    const auto before = requestsSent();
    EXPECT_TRUE(port().capture.preflightAccess());
    EXPECT_TRUE(port().capture.requestAccess());
    EXPECT_EQ(requestsSent(), before + 1);
}

TEST_F(CaptureTurnsTest, aServerThatDoesNotAnswerDecidesNothing) {
    port();
    settle();
    app.grab();
    EXPECT_FALSE(port().capture.preflightAccess());
    app.ungrab();
    EXPECT_TRUE(eventually([this] { return port().capture.preflightAccess(); }));
}

TEST_F(CaptureTurnsTest, aSnapshotHasTheIconsInTheirBandsAndFailsWithoutAnAnswer) {
    startTray();
    const auto icon = addPainted(pattern());
    settle();
    std::optional<ShareableContent> content;
    const auto keep = [&](std::optional<ShareableContent> found) { content = std::move(found); };
    port().capture.shareableContent(keep);
    loop.runUntilIdle();
    ASSERT_TRUE(content);
    ASSERT_EQ(content->windows.size(), 1U);
    EXPECT_EQ(content->windows[0].windowID, icon);
    EXPECT_EQ(content->windows[0].frame, (Rect{{1400, 0}, {width, 28}}));
    app.map(app.create({}));
    settle();
    app.grab();
    port().capture.shareableContent(keep);
    loop.runUntilIdle();
    EXPECT_FALSE(content);
    app.ungrab();
}

} // namespace
} // namespace orrivane::x11
