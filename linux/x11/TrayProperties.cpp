#include <linux/x11/TrayProperties.h>

namespace orrivane::x11 {

namespace {

// `count` numbers of the window that owns the tray; null when it has not that many.
Owned<xcb_get_property_reply_t> trayProperty(Connection& connection, Atom name, int count) {
    const auto until = Connection::deadline();
    auto* raw = connection.raw();
    const auto owner = connection.wait<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(raw, connection.atom(Atom::traySelection)), until);
    if (!owner || owner->owner == XCB_NONE)
        return nullptr;
    auto reply = connection.wait<xcb_get_property_reply_t>(
        xcb_get_property(raw, 0, owner->owner, connection.atom(name), XCB_ATOM_CARDINAL, 0,
                         static_cast<std::uint32_t>(count)),
        until);
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != count * 4)
        return nullptr;
    return reply;
}

} // namespace

std::optional<std::uint32_t> trayInk(Connection& connection) {
    constexpr int channels = 3; // of the first of four colours, the ordinary one
    const auto colors = trayProperty(connection, Atom::trayColors, channels);
    if (!colors)
        return std::nullopt;
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(colors.get()));
    const auto channel = [values](int i) { return (values[i] >> 8) & 0xFF; };
    return channel(0) << 16 | channel(1) << 8 | channel(2);
}

bool trayIsAMenuBar(Connection& connection) {
    return trayProperty(connection, Atom::itemMetrics, 2) != nullptr;
}

} // namespace orrivane::x11
