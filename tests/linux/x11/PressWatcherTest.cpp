#include "support/Desk.h"

#include <linux/x11/PressWatcher.h>

#include <Observer.h>

namespace orrivane::x11 {
namespace {

/// A hand at the pointer, and a watcher of what it presses.
class PressWatcherTest : public Desk {
  protected:
    [[nodiscard]] Subscription watch() {
        return watcher.watch([this] { ++heard; });
    }
    void press(int button) { hand.click({700, 500}, static_cast<std::uint8_t>(button)); }
    /// Reads what happened without the loop.
    void read() {
        settle();
        open().drain();
    }
    [[nodiscard]] int heardSoFar() {
        read();
        loop.runUntilIdle();
        return heard;
    }

    e2e::Observer hand{server.display()};
    PressWatcher watcher{open(), loop};
    int heard = 0;
};

TEST_F(PressWatcherTest, everyPressOfAPlainButtonIsToldAndNoTurnOfTheWheel) {
    const auto watching = watch();
    for (const int button : {1, 2, 3})
        press(button);
    EXPECT_EQ(heardSoFar(), 3);
    for (const int wheel : {4, 5})
        press(wheel);
    EXPECT_EQ(heardSoFar(), 3);
}

TEST_F(PressWatcherTest, aPressIsToldByTheLoopAndNotInTheMiddleOfARead) {
    const auto watching = watch();
    press(1);
    read();
    EXPECT_EQ(heard, 0);
    loop.runUntilIdle();
    EXPECT_EQ(heard, 1);
}

TEST_F(PressWatcherTest, whoWatchesNoLongerHearsNothing) {
    auto watching = watch();
    press(1);
    read();
    watching.reset();
    EXPECT_EQ(heardSoFar(), 0) << "not even what was on its way";
    press(1);
    EXPECT_EQ(heardSoFar(), 0);
    watching = watch();
    press(1);
    EXPECT_EQ(heardSoFar(), 1);
}

TEST_F(PressWatcherTest, aPressIsHeardThoughAnotherProgramHoldsThePointer) {
    const auto watching = watch();
    const auto window = app.create({.area = {0, 0, 50, 50}, .overrideRedirect = true});
    app.map(window);
    const Owned<xcb_grab_pointer_reply_t> grab(xcb_grab_pointer_reply(
        app.raw(),
        xcb_grab_pointer(app.raw(), 0, window, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr));
    ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
    press(1);
    EXPECT_EQ(heardSoFar(), 1);
}

} // namespace
} // namespace orrivane::x11
