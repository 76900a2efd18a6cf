#include "support/Desk.h"
#include "support/TrayProcess.h"

#include <Orrivane/IconIdentity.h>

#include <Observer.h>
#include <xcb/shape.h>

namespace orrivane::x11 {
namespace {

class PressTest : public Desk {
  protected:
    PressTest()
        : eyes(server.display())
        , toolkitClient(server.display()) {
        startTray();
        icon = addIcon({1400, 2, 24, 22});
        app.listen(icon, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE);
        eyes.movePointer({300, 400});
    }

    int press(std::uint32_t window, PointerButton button = PointerButton::primary) {
        settle();
        const int result = port().presser.press(window, button);
        settle(); // what was sent last has been dealt with, too
        return result;
    }
    int press() { return press(icon); }
    /// How many clicks the icon has seen, each a press and a release.
    int clicks() {
        const int presses = app.count(XCB_BUTTON_PRESS, icon);
        EXPECT_EQ(app.count(XCB_BUTTON_RELEASE, icon), presses);
        return presses;
    }
    xcb_window_t cover(XClient& client, const PixelRect& area) {
        const auto window =
            client.create({.area = area, .overrideRedirect = true, .background = 0x884422});
        client.listen(window, XCB_EVENT_MASK_BUTTON_PRESS);
        client.map(window);
        return window;
    }
    xcb_window_t openPanel(const PixelRect& area) {
        const auto panel = cover(toolkitClient, area);
        port().stage.adopt(panel);
        return panel;
    }

    e2e::Observer eyes;
    XClient toolkitClient;
    std::uint32_t icon = 0;
    static constexpr PixelRect overTheIcon{1380, 0, 60, 28};
};

TEST_F(PressTest, aPressIsOneClickOnTheIcon) {
    EXPECT_EQ(press(), 0);
    EXPECT_EQ(clicks(), 1);
}

TEST_F(PressTest, thePointerIsBackWhereItWas) {
    EXPECT_EQ(press(), 0);
    EXPECT_EQ(eyes.pointer(), (e2e::PixelPoint{300, 400}));
}

TEST_F(PressTest, theActionsPressTheirButtons) {
    TrayProcess process(server.display(), directory.path(), "mixer");
    tray->embed(process.icon(), tray->addSocket({1300, 2, 24, 22}));
    app.unmap(icon);
    settle();
    auto& accessibility = port().accessibility;
    const auto owners = IconIdentity::resolveOwners(accessibility);
    ASSERT_EQ(owners.size(), 1U);
    EXPECT_TRUE(accessibility.statusItemsHaveSecondaryAction());
    EXPECT_EQ(accessibility.performAction(owners[0].element, "AXPress"), 0);
    EXPECT_TRUE(e2e::waitFor("button 1", [&] { return process.presses(1) == 1; }));
    EXPECT_EQ(accessibility.performAction(owners[0].element, "AXShowMenu"), 0);
    EXPECT_TRUE(e2e::waitFor("button 3", [&] { return process.presses(3) == 1; }));
    EXPECT_EQ(accessibility.performAction(owners[0].element, "AXRaise"), Presser::cannotComplete);
    EXPECT_EQ(process.presses(1), 1);
}

TEST_F(PressTest, theOwnPanelOverTheIconStepsAsideAndTakesInputAgain) {
    const auto panel = openPanel(overTheIcon);
    const auto before = toolkitClient.inputShape(panel);
    EXPECT_EQ(press(), 0);
    EXPECT_EQ(clicks(), 1);
    EXPECT_EQ(toolkitClient.count(XCB_BUTTON_PRESS, panel), 0);
    EXPECT_EQ(toolkitClient.inputShape(panel), before);
    eyes.click({1412, 13});
    EXPECT_EQ(toolkitClient.count(XCB_BUTTON_PRESS, panel), 1);
    EXPECT_EQ(clicks(), 1);
}

TEST_F(PressTest, aPanelUnderThePointerTakesInputAgainToo) {
    const auto panel = openPanel({1300, 0, 200, 28});
    eyes.movePointer({1310, 10});
    EXPECT_EQ(press(), 0);
    EXPECT_EQ(eyes.pointer(), (e2e::PixelPoint{1310, 10}));
    EXPECT_EQ(eyes.leafAt({1310, 10}), panel);
}

TEST_F(PressTest, anIconUnderAnotherProgramsWindowIsNotPressed) {
    XClient other(server.display());
    const auto window = cover(other, overTheIcon);
    EXPECT_EQ(press(), Presser::cannotComplete);
    EXPECT_EQ(Presser::cannotComplete, -25204);
    EXPECT_EQ(clicks(), 0);
    EXPECT_EQ(other.count(XCB_BUTTON_PRESS, window), 0);
    EXPECT_EQ(eyes.pointer(), (e2e::PixelPoint{300, 400}));
}

TEST_F(PressTest, aPanelOverACoveredIconTakesInputAgainAfterTheFailure) {
    XClient other(server.display());
    cover(other, overTheIcon);
    const auto panel = openPanel(overTheIcon);
    const auto before = toolkitClient.inputShape(panel);
    EXPECT_EQ(press(), Presser::cannotComplete);
    EXPECT_EQ(clicks(), 0);
    EXPECT_EQ(toolkitClient.inputShape(panel), before);
}

TEST_F(PressTest, aWindowThatLetsClicksThroughDoesNotHinder) {
    XClient other(server.display());
    const auto window = cover(other, overTheIcon);
    xcb_shape_rectangles(other.raw(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                         XCB_CLIP_ORDERING_UNSORTED, window, 0, 0, 0, nullptr);
    other.sync();
    EXPECT_EQ(press(), 0);
    EXPECT_EQ(clicks(), 1);
}

TEST_F(PressTest, aWindowInsideTheIconIsTheIcon) {
    app.map(app.create({.parent = icon, .area = {0, 0, 24, 22}}));
    EXPECT_EQ(press(), 0);
    EXPECT_EQ(clicks(), 1);
}

TEST_F(PressTest, anotherSocketOverTheIconHinders) {
    tray->addSocket({1390, 0, 60, 28});
    EXPECT_EQ(press(), Presser::cannotComplete);
    EXPECT_EQ(clicks(), 0);
}

TEST_F(PressTest, anIconThatIsGoneOrNotShownIsNotPressed) {
    app.unmap(icon);
    EXPECT_EQ(press(), Presser::cannotComplete);
    app.map(icon);
    EXPECT_EQ(press(), 0);
    app.destroy(icon);
    EXPECT_EQ(press(), Presser::cannotComplete);
    EXPECT_EQ(eyes.pointer(), (e2e::PixelPoint{300, 400}));
}

TEST_F(PressTest, aNewIconOfAnOldIdIsNotPressedInItsPlace) {
    settle();
    const auto owners = IconIdentity::resolveOwners(port().accessibility);
    ASSERT_EQ(owners.size(), 1U);
    app.destroy(icon);
    app.createAs(icon, {});
    app.setXembedInfo(icon);
    app.listen(icon, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE);
    tray->embed(icon, tray->addSocket({1300, 2, 24, 22}));
    settle();
    EXPECT_EQ(port().accessibility.performAction(owners[0].element, "AXPress"),
              Presser::cannotComplete);
    EXPECT_FALSE(port().accessibility.copyAttributeValue(owners[0].element, "AXFrame"));
    EXPECT_EQ(clicks(), 0);
}

TEST_F(PressTest, anIconIsPressedWhereItIsNow) {
    ASSERT_EQ(press(), 0);
    tray->client.move(tree().find(icon)->parent, {900, 2, 24, 22});
    EXPECT_EQ(press(), 0);
    EXPECT_EQ(clicks(), 2);
}

TEST_F(PressTest, aGrabbedServerFailsThePressInBoundedTimeAndNothingIsClickedLater) {
    const auto panel = openPanel(overTheIcon);
    const auto before = toolkitClient.inputShape(panel);
    settle();
    port().items.current();
    app.grab();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(port().presser.press(icon, PointerButton::primary), Presser::cannotComplete);
    EXPECT_LT(std::chrono::steady_clock::now() - begin,
              Connection::answerLimit + std::chrono::seconds(2));
    app.ungrab();
    settle();
    EXPECT_EQ(clicks(), 0);
    EXPECT_EQ(toolkitClient.inputShape(panel), before);
}

} // namespace
} // namespace orrivane::x11
