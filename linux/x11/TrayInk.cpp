#include <linux/x11/TrayInk.h>

namespace orrivane::x11 {

std::optional<std::uint32_t> trayInk(Connection& connection) {
    const auto until = Connection::deadline();
    auto* raw = connection.raw();
    const auto owner = connection.wait<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(raw, connection.atom(Atom::traySelection)), until);
    if (!owner || owner->owner == XCB_NONE)
        return std::nullopt;
    constexpr int channels = 3; // of the first of four colours, the ordinary one
    const auto colors = connection.wait<xcb_get_property_reply_t>(
        xcb_get_property(raw, 0, owner->owner, connection.atom(Atom::trayColors), XCB_ATOM_CARDINAL,
                         0, channels),
        until);
    if (!colors || colors->format != 32 ||
        xcb_get_property_value_length(colors.get()) != channels * 4)
        return std::nullopt;
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(colors.get()));
    const auto channel = [values](int i) { return (values[i] >> 8) & 0xFF; };
    return channel(0) << 16 | channel(1) << 8 | channel(2);
}

} // namespace orrivane::x11
