#pragma once

#include <desktop/bar/ItemRow.h>
#include <desktop/bar/TrayWire.h>

namespace orrivane::desktop {

/// Moving an item by hand: pressed with Command (Super) held it follows the pointer until the
/// button is released. Escape, or losing the pointer to somebody else, puts everything back. A
/// press without Command is none of its business.
class CommandDrag {
  public:
    enum class Outcome { ignored, moved, dropped, cancelled };

    /// Events that the tray's window has to be listened to for.
    static constexpr std::uint32_t trayEvents =
        XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;

    /// `wire` and `row` outlive it.
    CommandDrag(const TrayWire& wire, xcb_window_t tray, ItemRow& row);

    /// What an event of the tray's window does to the row.
    Outcome handle(const xcb_generic_event_t& event);
    /// Called after anything else that may have changed the row: the held item may be gone.
    void settle();

  private:
    void grabPress() const;
    [[nodiscard]] xcb_keycode_t escapeCode() const;
    Outcome begin(const xcb_button_press_event_t& press);
    Outcome follow(const xcb_motion_notify_event_t& motion);
    Outcome drop(const xcb_button_release_event_t& released);
    Outcome cancel();
    void release();

    const TrayWire& wire_;
    xcb_window_t tray_;
    ItemRow& row_;
    xcb_keycode_t escape_;
    bool holding_ = false;
};

} // namespace orrivane::desktop
