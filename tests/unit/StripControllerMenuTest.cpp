#include "StripFixture.h"

namespace orrivane {
namespace {

using enum SystemNotification;

// The menu of the left item is open, opened from the strip.
struct OpenMenu : StripFixture {
    void open() {
        const auto element = elements.at(left);
        world.accessibility.setAction(element, "AXPress", 0, [this, element] {
            world.accessibility.setMenuOpen(element, true);
        });
        start();
        world.trayPanel.click(0);
        ASSERT_EQ(presses(), 1U);
    }
    /// Whether a click on its icon only forgets the menu.
    bool isRemembered() {
        EXPECT_EQ(row(), (Row{left, right}));
        const auto before = presses();
        world.trayPanel.click(0);
        return presses() == before;
    }
};

TEST_F(OpenMenu, outlivesTheCachesThatChangedScreensClear) {
    open();
    post(didChangeScreenParameters);
    EXPECT_TRUE(isRemembered());
}

TEST_F(OpenMenu, outlivesSleepAndWake) {
    open();
    post(willSleep);
    post(didWake);
    advance(3);
    EXPECT_TRUE(isRemembered());
}

TEST_F(OpenMenu, outlivesTheSwitchTurnedOffAndOn) {
    open();
    controller->setEnabled(false);
    controller->setEnabled(true);
    world.loop.runUntilIdle();
    EXPECT_TRUE(isRemembered());
}

TEST_F(OpenMenu, outlivesATickThatFindsNothingHidden) {
    open();
    const auto all = world.windowList.all;
    world.windowList.clear();
    advance(1);
    EXPECT_FALSE(shown());
    world.windowList.all = all;
    advance(2);
    EXPECT_TRUE(isRemembered());
}

TEST_F(OpenMenu, thatClosesUnderACaptureIsForgottenByThatTick) {
    open();
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    advance(3); // the fourth tick captures
    world.accessibility.setMenuOpen(elements.at(left), false);
    advance(0.5);
    EXPECT_FALSE(isRemembered());
}

TEST_F(OpenMenu, ofAnItemThatNoLongerFitsIsForgotten) {
    open();
    setMenuWidth(654 - 10 - 40);
    post(didActivateApplication);
    EXPECT_EQ(row(), Row{right});
    setMenuWidth(200);
    post(didActivateApplication);
    EXPECT_FALSE(isRemembered());
}

} // namespace
} // namespace orrivane
