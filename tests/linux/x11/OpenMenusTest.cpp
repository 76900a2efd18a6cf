#include "support/Desk.h"

#include <Orrivane/IconIdentity.h>

namespace orrivane::x11 {
namespace {

/// Which pressed icons have a menu open.
class OpenMenusTest : public Desk {
  protected:
    OpenMenusTest() {
        startTray();
        icon = addIcon({1400, 2, 24, 22});
    }

    void press(std::uint32_t window) {
        settle();
        ASSERT_EQ(port().presser.press(window, PointerButton::primary), 0);
    }
    void press() { press(icon); }
    std::uint32_t menuOf(std::uint32_t window) {
        settle();
        return port().menus.menuOf(window);
    }
    std::uint32_t menu() { return menuOf(icon); }
    static NewWindow popup(const PixelRect& area = {1300, 28, 200, 300}) {
        return {.area = area, .overrideRedirect = true};
    }
    xcb_window_t open(XClient& client, const NewWindow& options = popup()) {
        const auto window = client.create(options);
        client.map(window);
        return window;
    }

    std::uint32_t icon = 0;
};

TEST_F(OpenMenusTest, whatTheIconsProgramMapsAfterThePressIsItsMenu) {
    press();
    EXPECT_EQ(menu(), 0U);
    const auto window = open(app);
    EXPECT_EQ(menu(), window);
}

TEST_F(OpenMenusTest, theOwnersElementHasAnOpenMenuMeanwhile) {
    settle();
    const auto owners = IconIdentity::resolveOwners(port().accessibility);
    ASSERT_EQ(owners.size(), 1U);
    press();
    EXPECT_FALSE(IconIdentity::hasOpenMenu(owners[0], port().accessibility));
    const auto window = open(app);
    settle();
    EXPECT_TRUE(IconIdentity::hasOpenMenu(owners[0], port().accessibility));
    app.unmap(window);
    settle();
    EXPECT_FALSE(IconIdentity::hasOpenMenu(owners[0], port().accessibility));
}

TEST_F(OpenMenusTest, whatWasMappedBeforeThePressIsNone) {
    open(app);
    EXPECT_EQ(menu(), 0U);
    press();
    EXPECT_EQ(menu(), 0U);
}

TEST_F(OpenMenusTest, whatWasMappedBeforeThePressAndNotTakenInYetIsNone) {
    ASSERT_EQ(menu(), 0U);
    const auto window = open(app);
    settle();
    ASSERT_EQ(port().presser.press(icon, PointerButton::primary), 0);
    EXPECT_EQ(menu(), 0U);
    app.unmap(window);
    app.map(window);
    EXPECT_EQ(menu(), window);
}

TEST_F(OpenMenusTest, aPressThatFailedOpensNothing) {
    XClient other(server.display());
    open(other, popup({1380, 0, 60, 28}));
    settle();
    ASSERT_NE(port().presser.press(icon, PointerButton::primary), 0);
    open(app);
    EXPECT_EQ(menu(), 0U);
}

TEST_F(OpenMenusTest, aTooltipIsNone) {
    press();
    const auto window = app.create(popup());
    app.setType(window, "TOOLTIP");
    app.map(window);
    EXPECT_EQ(menu(), 0U);
}

TEST_F(OpenMenusTest, aToolkitsHelperWindowIsNone) {
    press();
    open(app, popup({1300, 28, 8, 300}));
    open(app, popup({1300, 28, 200, 8}));
    EXPECT_EQ(menu(), 0U);
    const auto window = open(app, popup({1300, 28, 9, 9}));
    EXPECT_EQ(menu(), window);
}

TEST_F(OpenMenusTest, aWindowOffTheScreenIsNone) {
    press();
    open(app, popup({-100, -100, 10, 10}));
    open(app, popup({1600, 28, 200, 300}));
    EXPECT_EQ(menu(), 0U);
}

TEST_F(OpenMenusTest, aWindowForTheWindowManagerIsNone) {
    press();
    open(app, {.area = {1300, 28, 200, 300}});
    EXPECT_EQ(menu(), 0U);
}

TEST_F(OpenMenusTest, anotherProgramsWindowIsNone) {
    press();
    XClient other(server.display());
    open(other);
    EXPECT_EQ(menu(), 0U);
}

TEST_F(OpenMenusTest, aMenuIsClosedWhenItIsUnmappedOrDestroyed) {
    press();
    const auto window = open(app);
    ASSERT_EQ(menu(), window);
    app.unmap(window);
    EXPECT_EQ(menu(), 0U);
    app.map(window);
    ASSERT_EQ(menu(), window);
    app.destroy(window);
    EXPECT_EQ(menu(), 0U);
}

TEST_F(OpenMenusTest, aSubmenuKeepsTheMenuOpen) {
    press();
    const auto first = open(app);
    const auto second = open(app, popup({1100, 60, 200, 300}));
    ASSERT_NE(menu(), 0U);
    app.destroy(second);
    EXPECT_EQ(menu(), first);
}

TEST_F(OpenMenusTest, twoIconsOfOneProgramAreToldApartByTheLastPress) {
    const auto second = addIcon({1360, 2, 24, 22});
    press(icon);
    const auto first = open(app);
    EXPECT_EQ(menuOf(icon), first);
    EXPECT_EQ(menuOf(second), 0U);
    app.destroy(first);
    press(second);
    const auto other = open(app);
    EXPECT_EQ(menuOf(icon), 0U);
    EXPECT_EQ(menuOf(second), other);
}

TEST_F(OpenMenusTest, iconsOfTwoProgramsHaveMenusOfTheirOwn) {
    XClient other(server.display());
    const auto second = tray->add(other, {1360, 2, 24, 22});
    press(icon);
    const auto first = open(app);
    press(second);
    const auto next = open(other, popup({1000, 28, 200, 300}));
    EXPECT_EQ(menuOf(icon), first);
    EXPECT_EQ(menuOf(second), next);
}

TEST_F(OpenMenusTest, theEndOfTheIconIsTheEndOfItsPress) {
    press();
    app.destroy(icon);
    app.createAs(icon, {});
    app.setXembedInfo(icon);
    tray->embed(icon, tray->addSocket({1300, 2, 24, 22}));
    open(app);
    EXPECT_EQ(menu(), 0U);
}

TEST_F(OpenMenusTest, nobodyAsksTheServerForAMenuThatIsOpen) {
    press();
    const auto window = open(app);
    ASSERT_EQ(menu(), window);
    const auto before = requestsSent();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(port().menus.menuOf(icon), window);
    EXPECT_EQ(requestsSent(), before + 1);
}

} // namespace
} // namespace orrivane::x11
