#include "support/Desk.h"

#include <Observer.h>

#include <algorithm>

namespace orrivane::x11 {
namespace {

/// Where the panel lies, and what lies over the dock.
class PanelStageTest : public Desk {
  protected:
    PanelStageTest()
        : eyes(server.display())
        , toolkitClient(server.display()) {}

    X11PanelStage& stage() { return port().stage; }
    /// The program's own panel, at the top of everything as toolkits open it.
    xcb_window_t openPanel() {
        panel = window(toolkitClient, {0, 0, 50, 28});
        stage().adopt(panel);
        changes = stage().onChange([this] { ++told; });
        pump();
        return panel;
    }
    xcb_window_t window(XClient& client, const PixelRect& area) {
        const auto id = client.create({.area = area, .overrideRedirect = true});
        client.map(id);
        return id;
    }
    void place(const PixelRect& rect) {
        settle();
        stage().place(rect);
    }
    /// The children of the root, bottom to top.
    Windows stack() {
        Windows ids;
        for (const auto& state : eyes.topLevels())
            ids.push_back(state.id);
        return ids;
    }
    /// What lies directly on top of `window`.
    std::uint32_t directlyAbove(xcb_window_t below) {
        const auto ids = stack();
        const auto found = std::ranges::find(ids, below);
        return found == ids.end() || found + 1 == ids.end() ? 0 : *(found + 1);
    }
    PixelRect areaOf(xcb_window_t id) {
        const auto state = eyes.window(id);
        EXPECT_TRUE(state);
        return state
                   ? PixelRect{state->area.x, state->area.y, state->area.width, state->area.height}
                   : PixelRect{};
    }

    e2e::Observer eyes;
    XClient toolkitClient;
    xcb_window_t panel = 0;
    int told = 0;
    Subscription changes;
};

TEST_F(PanelStageTest, thePanelLiesDirectlyAboveTheDockAndUnderMenus) {
    startTray();
    const auto menu = window(app, {0, 28, 200, 300});
    openPanel();
    place({600, 1, 56, 27});
    EXPECT_EQ(directlyAbove(tray->dock()), panel);
    EXPECT_EQ(directlyAbove(panel), menu);
    EXPECT_EQ(areaOf(panel), (PixelRect{600, 1, 56, 27}));
}

TEST_F(PanelStageTest, theDocksFrameCountsWhereThereIsOne) {
    startTray();
    XClient manager(server.display());
    const auto check = manager.create({});
    manager.setNumbers(manager.root(), "_NET_SUPPORTING_WM_CHECK", {check}, "WINDOW");
    const auto frame = window(manager, FakeTray::topBar);
    manager.reparent(tray->dock(), frame);
    window(app, {0, 28, 200, 300});
    openPanel();
    place({600, 1, 56, 27});
    EXPECT_EQ(directlyAbove(frame), panel);
}

TEST_F(PanelStageTest, withoutADockThePanelIsPlacedAllTheSame) {
    openPanel();
    place({-30, 1, 56, 27});
    EXPECT_EQ(areaOf(panel), (PixelRect{-30, 1, 56, 27}));
}

TEST_F(PanelStageTest, aPanelOfNoWidthIsAsSmallAsTheServerAllows) {
    startTray();
    openPanel();
    place({600, 1, 0, 0});
    EXPECT_EQ(areaOf(panel), (PixelRect{600, 1, 1, 1}));
}

TEST_F(PanelStageTest, aDockThatGoesBetweenLookAndRequestLeavesThePlaceRight) {
    startTray();
    openPanel();
    place({600, 1, 56, 27});
    tray->client.leave(); // not taken in yet
    stage().place({500, 1, 60, 27});
    EXPECT_EQ(areaOf(panel), (PixelRect{500, 1, 60, 27}));
}

TEST_F(PanelStageTest, aDockThatStartsAnewIsToldAndThePanelGoesAboveIt) {
    startTray();
    openPanel();
    place({600, 1, 56, 27});
    pump();
    tray->client.leave();
    pump();
    told = 0;
    FakeTray next(server.display());
    EXPECT_TRUE(eventually([this] { return told > 0; }));
    place({600, 1, 56, 27});
    EXPECT_EQ(directlyAbove(next.dock()), panel);
}

TEST_F(PanelStageTest, aDockThatIsRaisedOverThePanelIsTold) {
    startTray();
    openPanel();
    place({600, 1, 56, 27});
    pump();
    told = 0;
    tray->client.restack(tray->dock(), true);
    pump();
    EXPECT_EQ(told, 1);
    place({600, 1, 56, 27});
    EXPECT_EQ(directlyAbove(tray->dock()), panel);
    pump();
    told = 0;
    pump();
    EXPECT_EQ(told, 0) << "a panel in its place is no change";
}

TEST_F(PanelStageTest, aWindowBetweenDockAndPanelIsTold) {
    startTray();
    openPanel();
    place({600, 1, 56, 27});
    pump();
    told = 0;
    const auto between = window(app, {600, 0, 100, 28});
    app.restack(between, true, tray->dock());
    pump();
    EXPECT_EQ(told, 1);
    place({600, 1, 56, 27});
    EXPECT_EQ(directlyAbove(tray->dock()), panel);
    EXPECT_EQ(directlyAbove(panel), between);
}

TEST_F(PanelStageTest, aFullScreenWindowCoversTheDockAndAMenuDoesNot) {
    startTray();
    openPanel();
    place({600, 1, 56, 27});
    window(app, {0, 0, 300, 400});
    pump();
    EXPECT_FALSE(stage().dockIsCovered());
    told = 0;
    const auto full = window(app, {0, 0, 1512, 982});
    pump();
    EXPECT_TRUE(stage().dockIsCovered());
    EXPECT_EQ(told, 1);
    app.unmap(full);
    pump();
    EXPECT_FALSE(stage().dockIsCovered());
    EXPECT_EQ(told, 2);
}

TEST_F(PanelStageTest, aDockThatWasCoveredFromTheStartIsToldWhenItIsFree) {
    startTray();
    const auto full = window(app, {0, 0, 1512, 982});
    panel = window(toolkitClient, {0, 0, 50, 28});
    pump(); // everything so far is old news when the panel is told
    stage().adopt(panel);
    loop.runUntilIdle();
    EXPECT_TRUE(stage().dockIsCovered());
    changes = stage().onChange([this] { ++told; });
    app.unmap(full);
    pump();
    EXPECT_FALSE(stage().dockIsCovered());
    EXPECT_EQ(told, 1);
}

TEST_F(PanelStageTest, ownWindowsAndWindowsBelowDoNotCoverTheDock) {
    startTray();
    openPanel();
    window(toolkitClient, {0, 0, 1512, 982});
    const auto below = window(app, {0, 0, 1512, 982});
    app.restack(below, false);
    pump();
    EXPECT_FALSE(stage().dockIsCovered());
}

TEST_F(PanelStageTest, aCompositorIsNoticedWhenItComesAndWhenItGoes) {
    startTray();
    openPanel();
    place({600, 1, 56, 27});
    pump();
    EXPECT_FALSE(stage().isComposited());
    XClient compositor(server.display());
    const auto owner = compositor.create({});
    pump();
    told = 0;
    compositor.own("_NET_WM_CM_S0", owner);
    compositor.announce("_NET_WM_CM_S0", owner);
    pump();
    EXPECT_TRUE(stage().isComposited());
    EXPECT_EQ(told, 1);
    compositor.leave();
    EXPECT_TRUE(eventually([this] { return told == 2; }));
    EXPECT_FALSE(stage().isComposited());
}

TEST_F(PanelStageTest, framesBecomePixelsEdgeByEdge) {
    scale = 1.5;
    EXPECT_EQ(stage().scale(), 1.5);
    const double bottom = 982 / 1.5;
    EXPECT_EQ(stage().pixels({{100.5, bottom - 37}, {33, 37}}), (PixelRect{151, 0, 49, 56}));
}

} // namespace
} // namespace orrivane::x11
