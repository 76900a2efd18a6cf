#include "support/Desk.h"
#include "support/RandR.h"

#include <xcb/composite.h>

#include <algorithm>

namespace orrivane::x11 {
namespace {

/// The tray's icons as the window list gives them.
class StatusItemsTest : public Desk {
  protected:
    using Entries = std::vector<WindowListEntry>;

    Entries all() {
        settle();
        return itemsIn(port().windowList.allWindows());
    }
    Entries onscreen() {
        settle();
        return itemsIn(port().windowList.onscreenWindows());
    }
    static Entries itemsIn(Entries entries) {
        std::erase_if(entries, [](const auto& entry) { return entry.layer != 25; });
        return entries;
    }
    static Rect rect(double x, double y, double width, double height) {
        return {{x, y}, {width, height}};
    }
    xcb_window_t cover(XClient& client, const PixelRect& area, const NewWindow& like = {}) {
        auto options = like;
        options.area = area;
        const auto window = client.create(options);
        client.map(window);
        return window;
    }
};

TEST_F(StatusItemsTest, anIconIsAsHighAsTheCutoutsBand) {
    setCutout({656, 0, 200, 37});
    startTray();
    const auto icon = addIcon({1400, 2, 24, 22});
    EXPECT_EQ(all(), (Entries{{25, icon, rect(1400, 0, 24, 37), true}}));
    EXPECT_EQ(onscreen(), all());
}

TEST_F(StatusItemsTest, withoutACutoutAnIconIsAsHighAsItsDock) {
    startTray({0, 5, 1512, 28});
    const auto icon = addIcon({1400, 2, 24, 22});
    EXPECT_EQ(all(), (Entries{{25, icon, rect(1400, 5, 24, 28), true}}));
}

TEST_F(StatusItemsTest, anIconOutsideTheCutoutsBandIsAsHighAsItsDock) {
    setCutout({656, 0, 200, 37});
    startTray({0, 940, 1512, 42});
    addIcon({1400, 2, 24, 22});
    ASSERT_EQ(all().size(), 1U);
    EXPECT_EQ(all()[0].bounds, rect(1400, 940, 24, 42));
}

TEST_F(StatusItemsTest, framesAreInPoints) {
    scale = 2;
    setCutout({656, 0, 200, 74});
    startTray({0, 0, 1512, 74});
    addIcon({1401, 4, 48, 44});
    ASSERT_EQ(all().size(), 1U);
    EXPECT_EQ(all()[0].bounds, rect(700.5, 0, 24, 37));
}

TEST_F(StatusItemsTest, framesAreDownFromThePrimaryScreensTop) {
    setMonitor(app, "second", {200, 300, 1000, 600}, true);
    startTray({200, 300, 1000, 28});
    addIcon({900, 2, 24, 22});
    ASSERT_EQ(all().size(), 1U);
    EXPECT_EQ(all()[0].bounds, rect(1100, 0, 24, 28));
}

TEST_F(StatusItemsTest, aCutoutThatIsToldLaterChangesTheBand) {
    startTray();
    addIcon({1400, 2, 24, 22});
    ASSERT_EQ(all().size(), 1U);
    setCutout({656, 0, 200, 37});
    EXPECT_EQ(all()[0].bounds, rect(1400, 0, 24, 37));
    app.remove(app.root(), "_ORRIVANE_DISPLAY_CUTOUT");
    EXPECT_EQ(all()[0].bounds, rect(1400, 0, 24, 28));
}

TEST_F(StatusItemsTest, anUnmappedIconIsNoItem) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 22});
    ASSERT_EQ(all().size(), 1U);
    app.unmap(icon);
    EXPECT_TRUE(all().empty());
    app.map(icon);
    EXPECT_EQ(all().size(), 1U);
    tray->client.unmap(tray->dock());
    EXPECT_TRUE(all().empty());
}

TEST_F(StatusItemsTest, anInputOnlyIconIsNoItem) {
    startTray();
    addIcon({1400, 2, 24, 22}, {.inputOnly = true});
    EXPECT_EQ(icons().size(), 1U);
    EXPECT_TRUE(all().empty());
}

TEST_F(StatusItemsTest, ordinaryWindowsHaveAnotherLayer) {
    const auto shown = cover(app, {0, 100, 400, 300});
    const auto hidden = app.create({.area = {10, 20, 30, 40}});
    cover(app, {0, 0, 5, 5}, {.inputOnly = true});
    settle();
    const WindowListEntry first{0, shown, rect(0, 100, 400, 300), true};
    const WindowListEntry second{0, hidden, rect(10, 20, 30, 40), false};
    EXPECT_EQ(port().windowList.allWindows(), (Entries{first, second}));
    EXPECT_EQ(port().windowList.onscreenWindows(), (Entries{first}));
}

TEST_F(StatusItemsTest, anIconUnderAnotherProgramsWindowIsNotOnScreen) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 22});
    XClient other(server.display());
    const auto window = cover(other, {1380, 0, 60, 28});
    EXPECT_EQ(all(), (Entries{{25, icon, rect(1400, 0, 24, 28), false}}));
    EXPECT_TRUE(onscreen().empty());
    other.restack(window, false);
    EXPECT_EQ(onscreen().size(), 1U);
}

TEST_F(StatusItemsTest, aWindowBesideTheCentreDoesNotCover) {
    startTray();
    addIcon({1400, 2, 24, 22});
    XClient other(server.display());
    cover(other, {1413, 0, 60, 28});
    EXPECT_EQ(onscreen().size(), 1U);
}

TEST_F(StatusItemsTest, whatCannotBeSeenDoesNotCover) {
    startTray();
    addIcon({1400, 2, 24, 22});
    XClient other(server.display());
    cover(other, {1380, 0, 60, 28}, {.inputOnly = true});
    const auto unmapped = cover(other, {1380, 0, 60, 28});
    other.unmap(unmapped);
    const auto shaped = cover(other, {1300, 0, 200, 28});
    other.shapeBounding(shaped, {0, 0, 50, 28});
    EXPECT_EQ(onscreen().size(), 1U);
}

TEST_F(StatusItemsTest, theOverlayOfACompositorDoesNotCover) {
    startTray();
    addIcon({1400, 2, 24, 22});
    ASSERT_EQ(onscreen().size(), 1U);
    XClient compositor(server.display());
    const Owned<xcb_composite_get_overlay_window_reply_t> overlay(
        xcb_composite_get_overlay_window_reply(
            compositor.raw(), xcb_composite_get_overlay_window(compositor.raw(), compositor.root()),
            nullptr));
    ASSERT_TRUE(overlay);
    EXPECT_EQ(onscreen().size(), 1U);
    EXPECT_FALSE(port().stage.dockIsCovered());
}

TEST_F(StatusItemsTest, ownWindowsDoNotCover) {
    startTray();
    addIcon({1400, 2, 24, 22});
    XClient toolkit_(server.display());
    const auto panel = cover(toolkit_, {1380, 0, 60, 28});
    EXPECT_TRUE(onscreen().empty());
    port().stage.adopt(panel);
    pump();
    EXPECT_EQ(onscreen().size(), 1U);
}

TEST_F(StatusItemsTest, ownWindowsAreThoseOfBothConnections) {
    startTray();
    const auto foreign = addIcon({1400, 2, 24, 22});
    XClient toolkit_(server.display());
    const auto panel = cover(toolkit_, {1380, 0, 60, 28});
    const auto ownIcon = tray->add(toolkit_, {1370, 2, 24, 22});
    port().stage.adopt(panel);
    const auto ofPort = xcb_generate_id(open().raw());
    xcb_create_window(open().raw(), 0, ofPort, app.root(), 0, 0, 5, 5, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    settle();
    auto numbers = port().ownWindows.windowNumbers();
    std::ranges::sort(numbers);
    std::vector<std::int64_t> expected{panel, ownIcon, ofPort};
    std::ranges::sort(expected);
    EXPECT_EQ(numbers, expected);
    EXPECT_EQ(std::ranges::count(numbers, foreign), 0);
}

TEST_F(StatusItemsTest, anIconThatDiesWhileItemsAreWorkedOutIsGoneTheNextTime) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 22});
    const auto stays = addIcon({1370, 2, 24, 22});
    ASSERT_EQ(icons().size(), 2U); // the tree is known, the screens are not
    open().setQueuedHandler([&, done = false]() mutable {
        if (!std::exchange(done, true))
            app.destroy(icon);
    });
    port().items.current();
    open().setQueuedHandler({});
    settle();
    ASSERT_EQ(port().items.current().size(), 1U);
    EXPECT_EQ(port().items.current()[0].window, stays);
}

TEST_F(StatusItemsTest, screensThatCouldNotBeReadAreReadTheNextTime) {
    setMonitor(app, "second", {200, 300, 1000, 600}, true);
    startTray({200, 300, 1000, 28});
    addIcon({900, 2, 24, 22});
    ASSERT_EQ(all()[0].bounds, rect(1100, 0, 24, 28));
    setCutout({600, 300, 100, 37});
    settle();
    app.grab();
    port().windowList.allWindows(); // the tree needs no answer, the screens do
    app.ungrab();
    EXPECT_TRUE(eventually([&] {
        const auto entries = all();
        return entries.size() == 1 && entries[0].bounds == rect(1100, 0, 24, 37);
    }));
}

} // namespace
} // namespace orrivane::x11
