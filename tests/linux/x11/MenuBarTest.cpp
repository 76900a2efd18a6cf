#include "support/Desk.h"
#include "support/RandR.h"
#include "support/TrayProcess.h"

#include <Orrivane/IconIdentity.h>

#include <unistd.h>

namespace orrivane::x11 {
namespace {

/// How far menus reach into the bar.
class MenuBarTest : public Desk {
  protected:
    std::optional<double> menuWidth() {
        settle();
        return IconIdentity::frontmostMenuWidth(port().accessibility);
    }
    /// A part of the dock that is no icon.
    xcb_window_t addContent(const PixelRect& inside, xcb_window_t parent = XCB_NONE) {
        return tray->addSocket(inside, parent);
    }
    void activate(xcb_window_t window) {
        app.setNumbers(app.root(), "_NET_ACTIVE_WINDOW", {window}, "WINDOW");
    }
    void startNotchedTray() {
        setCutout({656, 0, 200, 37});
        startTray();
    }
};

TEST_F(MenuBarTest, withoutADockItIsAbsent) {
    setCutout({656, 0, 200, 37});
    const auto window = app.create({.area = {0, 100, 300, 200}});
    app.map(window);
    activate(window);
    EXPECT_EQ(menuWidth(), std::nullopt);
}

TEST_F(MenuBarTest, aDockWithNothingInItHasMenusOfNoWidth) {
    startNotchedTray();
    EXPECT_EQ(menuWidth(), 0);
}

TEST_F(MenuBarTest, whatTheDockShowsLeftOfTheNotchIsTheMenus) {
    startNotchedTray();
    addContent({0, 0, 90, 28});
    addContent({100, 0, 250, 28});
    addContent({1000, 0, 100, 28});
    EXPECT_EQ(menuWidth(), 350);
}

TEST_F(MenuBarTest, whatIsNotShownDoesNotCount) {
    startNotchedTray();
    const auto content = addContent({0, 0, 90, 28});
    const auto hidden = addContent({100, 0, 250, 28});
    tray->client.unmap(hidden);
    EXPECT_EQ(menuWidth(), 90);
    tray->client.destroy(content);
    EXPECT_EQ(menuWidth(), 0);
}

TEST_F(MenuBarTest, aContainerThatReachesPastTheNotchCountsByWhatIsInIt) {
    startNotchedTray();
    const auto container = addContent({0, 0, 1512, 28});
    addContent({0, 0, 120, 28}, container);
    addContent({900, 0, 120, 28}, container);
    EXPECT_EQ(menuWidth(), 120);
}

TEST_F(MenuBarTest, aContainerOfMenusAndIconsCountsByItsMenus) {
    startNotchedTray();
    const auto container = addContent({0, 0, 640, 28});
    addContent({0, 0, 120, 28}, container);
    const auto socket = addContent({600, 2, 24, 22}, container);
    tray->embed(FakeTray::makeIcon(app, 24, 22), socket);
    EXPECT_EQ(menuWidth(), 120);
}

TEST_F(MenuBarTest, iconsAndTheirSocketsDoNotCount) {
    startNotchedTray();
    addContent({0, 0, 90, 28});
    addIcon({500, 2, 24, 22});
    EXPECT_EQ(menuWidth(), 90);
}

TEST_F(MenuBarTest, theTraysOwnPluginDoesNotCount) {
    setCutout({656, 0, 200, 37});
    XClient panel(server.display());
    const auto dock = panel.create({.area = FakeTray::topBar});
    panel.setType(dock, "DOCK");
    panel.map(dock);
    const auto menus = panel.create({.parent = dock, .area = {0, 0, 200, 28}});
    panel.map(menus);
    const auto socket = panel.create({.parent = dock, .area = {300, 0, 300, 28}});
    panel.map(socket);
    XClient plugin(server.display());
    const auto plug = FakeTray::makeIcon(plugin, 300, 28);
    panel.reparent(plug, socket);
    plugin.map(plug);
    const auto owner = plugin.create({.parent = plug, .area = {0, 0, 10, 10}});
    plugin.own("_NET_SYSTEM_TRAY_S0", owner);
    EXPECT_EQ(menuWidth(), 200);
    const auto iconSocket = plugin.create({.parent = plug, .area = {50, 3, 22, 22}});
    plugin.map(iconSocket);
    const auto icon = FakeTray::makeIcon(app, 22, 22);
    plugin.reparent(icon, iconSocket);
    app.map(icon);
    ASSERT_EQ(icons(), Windows{icon});
    EXPECT_EQ(menuWidth(), 200);
}

TEST_F(MenuBarTest, theWidthIsInPointsFromTheBarsLeftEnd) {
    scale = 2;
    setMonitor(app, "second", {200, 300, 1200, 600}, true);
    setCutout({700, 300, 200, 74});
    startTray({200, 300, 1200, 56});
    addContent({0, 0, 300, 56});
    EXPECT_EQ(menuWidth(), 150);
}

TEST_F(MenuBarTest, withNoActiveWindowTheDocksProcessOwnsTheBar) {
    startNotchedTray();
    const auto owner = port().accessibility.menuBarOwningApplication();
    ASSERT_TRUE(owner);
    EXPECT_EQ(owner->processIdentifier, getpid());
    EXPECT_EQ(owner->localizedName, "Fake Tray");
    EXPECT_FALSE(port().accessibility.frontmostApplication());
}

TEST_F(MenuBarTest, theActiveWindowsProcessOwnsTheBar) {
    startNotchedTray();
    TrayProcess process(server.display(), directory.path(), "editor");
    activate(process.icon());
    settle();
    const RunningApplication expected{process.pid(), "editor", std::nullopt};
    EXPECT_EQ(port().accessibility.menuBarOwningApplication(), expected);
    EXPECT_EQ(port().accessibility.frontmostApplication(), expected);
    EXPECT_EQ(menuWidth(), 0);
}

TEST_F(MenuBarTest, whatIsKnownIsNotAskedForAgain) {
    startNotchedTray();
    const auto window = app.create({.area = {0, 100, 300, 200}});
    app.map(window);
    activate(window);
    ASSERT_EQ(menuWidth(), 0);
    settle();
    const auto before = requestsSent();
    EXPECT_EQ(IconIdentity::frontmostMenuWidth(port().accessibility), 0);
    EXPECT_EQ(requestsSent(), before + 1); // that of the question itself
}

TEST_F(MenuBarTest, anotherProcessHasNoMenuBar) {
    startNotchedTray();
    TrayProcess process(server.display(), directory.path(), "editor");
    auto& accessibility = port().accessibility;
    const auto barOf = [&](std::int32_t pid) {
        return accessibility.copyAttributeValue(accessibility.applicationElement(pid), "AXMenuBar");
    };
    EXPECT_TRUE(barOf(getpid())); // nothing is active and the dock is this process's
    EXPECT_FALSE(barOf(process.pid()));
    activate(process.icon());
    settle();
    EXPECT_TRUE(barOf(process.pid()));
}

TEST_F(MenuBarTest, aGlobalMenuComesBeforeWhatTheDockShows) {
    std::vector<PixelRect> bands;
    globalMenu = [&](std::int32_t, PixelRect band) {
        bands.push_back(band);
        return std::optional(420);
    };
    startNotchedTray();
    addContent({0, 0, 90, 28});
    EXPECT_EQ(menuWidth(), 420);
    ASSERT_FALSE(bands.empty());
    EXPECT_EQ(bands[0], FakeTray::topBar);
}

TEST_F(MenuBarTest, aGlobalMenuThatTheDockShowsForTheActiveProgramCounts) {
    std::vector<std::int32_t> asked;
    globalMenu = [&](std::int32_t process, PixelRect) {
        asked.push_back(process);
        return process == getpid() ? std::optional(333) : std::nullopt;
    };
    startNotchedTray();
    TrayProcess process(server.display(), directory.path(), "editor");
    activate(process.icon());
    EXPECT_EQ(menuWidth(), 333);
    ASSERT_GE(asked.size(), 2U);
    EXPECT_EQ(asked[0], process.pid());
    EXPECT_EQ(asked[1], getpid());
}

TEST_F(MenuBarTest, withoutAGlobalMenuTheDocksContentCounts) {
    globalMenu = [](std::int32_t, PixelRect) -> std::optional<int> { return std::nullopt; };
    startNotchedTray();
    addContent({0, 0, 90, 28});
    EXPECT_EQ(menuWidth(), 90);
}

TEST_F(MenuBarTest, theDockInTheCutoutsBandIsPreferred) {
    setCutout({656, 0, 200, 37});
    for (const int top : {954, 0, 500}) {
        const auto dock = app.create({.area = {0, top, 1512, 28}});
        app.setType(dock, "DOCK");
        app.map(dock);
        if (top == 0)
            app.map(app.create({.parent = dock, .area = {0, 0, 77, 28}}));
    }
    EXPECT_EQ(menuWidth(), 77);
}

TEST_F(MenuBarTest, theDockThatHoldsTheIconsIsPreferredToOneInTheBand) {
    setCutout({656, 0, 200, 37});
    startTray({0, 954, 1512, 28});
    addIcon({1400, 2, 24, 22});
    const auto other = app.create({.area = FakeTray::topBar});
    app.setType(other, "DOCK");
    app.map(other);
    settle();
    ASSERT_TRUE(port().items.dock());
    EXPECT_EQ(port().items.dock()->id, tray->dock());
}

} // namespace
} // namespace orrivane::x11
