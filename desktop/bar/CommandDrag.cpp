#include <desktop/bar/CommandDrag.h>

#include <initializer_list>

namespace orrivane::desktop {

namespace {

constexpr xcb_button_t mainButton = 1;
constexpr xcb_keysym_t escapeSymbol = 0xff1b;
constexpr std::uint16_t command = XCB_MOD_MASK_4;
constexpr std::uint16_t capsLock = XCB_MOD_MASK_LOCK;
constexpr std::uint16_t numLock = XCB_MOD_MASK_2;

} // namespace

CommandDrag::CommandDrag(const TrayWire& wire, xcb_window_t tray, ItemRow& row)
    : wire_(wire)
    , tray_(tray)
    , row_(row)
    , escape_(escapeCode()) {
    grabPress();
}

void CommandDrag::grabPress() const {
    constexpr std::uint16_t followed = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                       XCB_EVENT_MASK_BUTTON_1_MOTION |
                                       XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
    // A grab names its modifiers exactly, and the locks are modifiers too.
    for (const std::uint16_t locks : std::initializer_list<std::uint16_t>{
             0, capsLock, numLock, static_cast<std::uint16_t>(capsLock | numLock)})
        wire_.ignore(xcb_grab_button_checked(wire_.raw(), 0, tray_, followed, XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, mainButton,
                                             static_cast<std::uint16_t>(command | locks)));
}

xcb_keycode_t CommandDrag::escapeCode() const {
    const auto* setup = xcb_get_setup(wire_.raw());
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const Owned<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(
        wire_.raw(),
        xcb_get_keyboard_mapping(wire_.raw(), setup->min_keycode, static_cast<std::uint8_t>(count)),
        nullptr));
    if (!mapping || mapping->keysyms_per_keycode == 0)
        return 0;
    const auto* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (int i = 0; i < count; ++i)
        if (symbols[i * mapping->keysyms_per_keycode] == escapeSymbol)
            return static_cast<xcb_keycode_t>(setup->min_keycode + i);
    return 0;
}

CommandDrag::Outcome CommandDrag::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
    case XCB_BUTTON_PRESS:
        return begin(reinterpret_cast<const xcb_button_press_event_t&>(event));
    case XCB_MOTION_NOTIFY:
        return follow(reinterpret_cast<const xcb_motion_notify_event_t&>(event));
    case XCB_BUTTON_RELEASE:
        return drop(reinterpret_cast<const xcb_button_release_event_t&>(event));
    case XCB_KEY_PRESS:
        return reinterpret_cast<const xcb_key_press_event_t&>(event).detail == escape_
                   ? cancel()
                   : Outcome::ignored;
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        return reinterpret_cast<const xcb_enter_notify_event_t&>(event).mode ==
                       XCB_NOTIFY_MODE_UNGRAB
                   ? cancel()
                   : Outcome::ignored;
    case XCB_MAPPING_NOTIFY:
        escape_ = escapeCode();
        return Outcome::ignored;
    default:
        return Outcome::ignored;
    }
}

CommandDrag::Outcome CommandDrag::begin(const xcb_button_press_event_t& press) {
    if (press.detail != mainButton)
        return Outcome::ignored;
    row_.cancelDrag();
    if (!row_.beginDrag(press.child, press.event_x))
        return Outcome::ignored;
    holding_ = true;
    const auto cookie = xcb_grab_keyboard(wire_.raw(), 0, tray_, press.time, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC);
    // Without the keyboard the item can still be dropped.
    xcb_discard_reply(wire_.raw(), cookie.sequence);
    return Outcome::moved;
}

CommandDrag::Outcome CommandDrag::follow(const xcb_motion_notify_event_t& motion) {
    if (row_.dragged() == 0)
        return Outcome::ignored;
    row_.dragTo(motion.event_x);
    return Outcome::moved;
}

CommandDrag::Outcome CommandDrag::drop(const xcb_button_release_event_t& released) {
    if (released.detail != mainButton || row_.dragged() == 0)
        return Outcome::ignored;
    row_.dragTo(released.event_x);
    row_.drop();
    release();
    return Outcome::dropped;
}

CommandDrag::Outcome CommandDrag::cancel() {
    if (row_.dragged() == 0)
        return Outcome::ignored;
    row_.cancelDrag();
    release();
    return Outcome::cancelled;
}

void CommandDrag::settle() {
    if (holding_ && row_.dragged() == 0)
        release();
}

void CommandDrag::release() {
    holding_ = false;
    wire_.ignore(xcb_ungrab_keyboard_checked(wire_.raw(), XCB_CURRENT_TIME));
    wire_.ignore(xcb_ungrab_pointer_checked(wire_.raw(), XCB_CURRENT_TIME));
}

} // namespace orrivane::desktop
