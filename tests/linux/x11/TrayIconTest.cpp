#include "support/Desk.h"

namespace orrivane::x11 {
namespace {

/// What the mirror takes for tray icons.
class TrayIconTest : public Desk {
  protected:
    /// A window manager as far as the mirror knows one: a client that says so on the root.
    struct FakeManager {
        explicit FakeManager(const std::string& display)
            : client(display)
            , check(client.create({.area = {-10, -10, 1, 1}, .overrideRedirect = true})) {
            client.setNumbers(client.root(), "_NET_SUPPORTING_WM_CHECK", {check}, "WINDOW");
        }
        xcb_window_t frame(xcb_window_t window, const PixelRect& area) {
            const auto outer = client.create({.area = area, .overrideRedirect = true});
            client.map(outer);
            client.reparent(window, outer);
            return outer;
        }
        XClient client;
        xcb_window_t check;
    };
};

TEST_F(TrayIconTest, aDockedWindowOfAnotherClientIsAnIcon) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    EXPECT_EQ(icons(), Windows{icon});
}

TEST_F(TrayIconTest, withoutATrayThereAreNone) {
    app.map(FakeTray::makeIcon(app, 24, 24));
    EXPECT_EQ(icons(), Windows{});
}

TEST_F(TrayIconTest, aTopLevelWithXembedInfoIsNone) {
    startTray();
    app.map(FakeTray::makeIcon(app, 400, 300));
    EXPECT_EQ(icons(), Windows{});
}

TEST_F(TrayIconTest, aWindowOfTheTrayItselfIsNone) {
    startTray();
    const auto socket = tray->addSocket({1400, 2, 24, 24});
    const auto own = FakeTray::makeIcon(tray->client, 24, 24);
    tray->embed(own, socket);
    EXPECT_EQ(icons(), Windows{});
}

TEST_F(TrayIconTest, aDockedWindowWithoutXembedInfoIsNoneUntilItGetsIt) {
    startTray();
    const auto window = app.create({});
    tray->embed(window, tray->addSocket({1400, 2, 24, 24}));
    EXPECT_EQ(icons(), Windows{});
    app.setXembedInfo(window);
    EXPECT_EQ(icons(), Windows{window});
    app.remove(window, "_XEMBED_INFO");
    EXPECT_EQ(icons(), Windows{});
}

TEST_F(TrayIconTest, aWindowInsideAnIconIsNone) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    XClient other(server.display());
    const auto inner = FakeTray::makeIcon(other, 10, 10);
    app.reparent(inner, icon);
    other.map(inner);
    EXPECT_EQ(icons(), Windows{icon});
}

TEST_F(TrayIconTest, theOwnPluginsOfAPanelAreNoneAndTheIconsInItsTrayPluginAre) {
    // Frame, panel, plugin socket, plugin plug, socket, icon, as in panels whose plugins are
    // processes of their own: the selection belongs to the plugin's process.
    FakeManager manager(server.display());
    XClient panel(server.display());
    const auto dock = panel.create({.area = FakeTray::topBar});
    panel.setType(dock, "DOCK");
    panel.map(dock);
    manager.frame(dock, FakeTray::topBar);
    XClient plugin(server.display());
    const auto owner = plugin.create({.area = {-100, -100, 10, 10}});
    plugin.own("_NET_SYSTEM_TRAY_S0", owner);
    const auto docked = [&](XClient& client, int x, int width) {
        const auto pluginSocket = panel.create({.parent = dock, .area = {x, 0, width, 28}});
        panel.map(pluginSocket);
        const auto plug = FakeTray::makeIcon(client, width, 28);
        panel.reparent(plug, pluginSocket);
        client.map(plug);
        return plug;
    };
    const auto trayPlug = docked(plugin, 1200, 300);
    XClient clock(server.display());
    docked(clock, 700, 100);
    const auto socket = plugin.create({.parent = trayPlug, .area = {100, 3, 22, 22}});
    plugin.map(socket);
    const auto icon = FakeTray::makeIcon(app, 22, 22);
    plugin.reparent(icon, socket);
    app.map(icon);
    EXPECT_EQ(icons(), Windows{icon});
    EXPECT_EQ(tree().rootRect(*tree().find(icon)), (PixelRect{1300, 3, 22, 22}));
    EXPECT_EQ(tree().dockOf(*tree().find(icon))->id, dock);
}

TEST_F(TrayIconTest, aDockThatAWindowManagerFramesLaterKeepsItsIcons) {
    FakeManager manager(server.display());
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{icon});
    const auto frame = manager.frame(tray->dock(), FakeTray::topBar);
    EXPECT_EQ(icons(), Windows{icon});
    EXPECT_EQ(tree().topLevel(*tree().find(icon))->id, frame);
    const auto second = addIcon({1370, 2, 24, 24});
    EXPECT_EQ(icons(), (Windows{icon, second}));
}

TEST_F(TrayIconTest, aWindowManagerThatStartsLaterIsKnownToo) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{icon});
    FakeManager manager(server.display());
    manager.frame(tray->dock(), FakeTray::topBar);
    EXPECT_EQ(icons(), Windows{icon});
}

TEST_F(TrayIconTest, iconsAppearAndVanish) {
    startTray();
    EXPECT_EQ(icons(), Windows{});
    const auto first = addIcon({1400, 2, 24, 24});
    EXPECT_EQ(icons(), Windows{first});
    const auto second = addIcon({1370, 2, 24, 24});
    EXPECT_EQ(icons(), (Windows{first, second}));
    app.destroy(first);
    EXPECT_EQ(icons(), Windows{second});
    app.leave();
    EXPECT_TRUE(eventually([&] { return icons().empty(); }));
}

TEST_F(TrayIconTest, anIconThatMovesWithItsSocketIsWhereItIs) {
    startTray();
    const auto socket = tray->addSocket({1400, 2, 24, 24});
    const auto icon = FakeTray::makeIcon(app, 20, 22);
    tray->embed(icon, socket, 2, 1);
    ASSERT_EQ(icons(), Windows{icon});
    tray->client.move(socket, {1300, 4, 24, 24});
    EXPECT_EQ(icons(), Windows{icon});
    EXPECT_EQ(tree().rootRect(*tree().find(icon)), (PixelRect{1302, 5, 20, 22}));
    tray->client.setBorder(socket, 3);
    EXPECT_EQ(icons(), Windows{icon});
    EXPECT_EQ(tree().rootRect(*tree().find(icon)), (PixelRect{1305, 8, 20, 22}));
}

TEST_F(TrayIconTest, anIconIsOneOnlyWhileItIsDocked) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{icon});
    tray->client.reparent(icon, tray->client.root());
    EXPECT_EQ(icons(), Windows{});
    tray->embed(icon, tray->addSocket({1300, 2, 24, 24}));
    EXPECT_EQ(icons(), Windows{icon});
}

TEST_F(TrayIconTest, whenTheSelectionMovesTheNewTraysIconsCount) {
    startTray();
    const auto old = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{old});
    FakeTray next(server.display(), {0, 954, 1512, 28});
    const auto fresh = next.add(app, {1400, 2, 24, 24});
    EXPECT_EQ(icons(), Windows{fresh});
}

TEST_F(TrayIconTest, whenTheTrayEndsNothingIsDockedAndTheNextOneIsFound) {
    startTray();
    ASSERT_EQ(icons().size(), 0U);
    addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons().size(), 1U);
    tray->client.leave();
    EXPECT_TRUE(eventually([&] { return icons().empty(); }));
    FakeTray next(server.display());
    const auto icon = next.add(app, {1400, 2, 24, 24});
    EXPECT_EQ(icons(), Windows{icon});
}

TEST_F(TrayIconTest, theEndOfTheSelectionsWindowIsTheEndOfTheTray) {
    startTray();
    addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons().size(), 1U);
    tray->client.destroy(tray->owner());
    EXPECT_EQ(icons(), Windows{});
}

TEST_F(TrayIconTest, aNewWindowOfAnOldIdIsAnotherWindow) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{icon});
    const auto serial = tree().find(icon)->serial;
    app.destroy(icon);
    app.createAs(icon, {.area = {0, 0, 20, 20}});
    app.setXembedInfo(icon);
    tray->embed(icon, tray->addSocket({1300, 2, 24, 24}));
    ASSERT_EQ(icons(), Windows{icon});
    EXPECT_NE(tree().find(icon)->serial, serial);
    EXPECT_EQ(tree().rootRect(*tree().find(icon)).x, 1300);
}

TEST_F(TrayIconTest, aWindowOfAnOldIconsIdIsNoIconByItself) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{icon});
    app.destroy(icon);
    app.createAs(icon, {.area = {0, 0, 20, 20}});
    app.setXembedInfo(icon);
    app.map(icon);
    EXPECT_EQ(icons(), Windows{});
}

TEST_F(TrayIconTest, theOrderOfIconsIsThatOfTheTree) {
    startTray();
    const auto left = addIcon({1300, 2, 24, 24});
    const auto right = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), (Windows{left, right}));
    tray->client.restack(tree().find(left)->parent, true);
    EXPECT_EQ(icons(), (Windows{right, left}));
}

TEST_F(TrayIconTest, eventsThatAClientSendsItselfChangeNothing) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 24});
    ASSERT_EQ(icons(), Windows{icon});
    xcb_destroy_notify_event_t lie{};
    lie.response_type = XCB_DESTROY_NOTIFY;
    lie.event = app.root();
    lie.window = icon;
    xcb_send_event(app.raw(), 0, app.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&lie));
    app.sync();
    EXPECT_EQ(icons(), Windows{icon});
}

} // namespace
} // namespace orrivane::x11
