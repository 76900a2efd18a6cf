#include "MenuClock.h"

#include <xcb/xtest.h>

namespace orrivane::bench {

std::optional<MenuClock::Timing> MenuClock::click(int x, int y, std::uint8_t button,
                                                  xcb_window_t icon,
                                                  std::chrono::milliseconds bound) {
    fake(XCB_MOTION_NOTIFY, 0, x, y);
    watch_.startAfresh();
    // Toolkits open menus on the press or on the release: both leave together, so that neither
    // gets a start.
    fake(XCB_BUTTON_PRESS, button, x, y);
    fake(XCB_BUTTON_RELEASE, button, x, y);
    const auto begin = MapWatch::Clock::now();
    xcb_flush(watch_.connection());
    const auto client = ~xcb_get_setup(watch_.connection())->resource_id_mask;
    const auto mapped = watch_.waitFor(
        [&](xcb_window_t window) { return (window & client) == (icon & client); }, begin + bound);
    if (!mapped)
        return std::nullopt;
    const std::chrono::duration<double, std::milli> taken = mapped->at - begin;
    return Timing{taken.count(), mapped->window};
}

void MenuClock::fake(std::uint8_t type, std::uint8_t detail, int x, int y) {
    xcb_test_fake_input(watch_.connection(), type, detail, XCB_CURRENT_TIME, watch_.root(),
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
}

} // namespace orrivane::bench
