#include <desktop/support/XServer.h>

#include <QGuiApplication>

namespace orrivane::desktop::xserver {

xcb_connection_t* connection() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

xcb_window_t root() {
    return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
}

xcb_atom_t atom(std::string_view name) {
    const auto cookie =
        xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Owned<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection(), cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::optional<std::vector<std::uint32_t>> cardinals(xcb_window_t window,
                                                    std::string_view property) {
    constexpr std::uint32_t most = 64;
    xcb_generic_error_t* error = nullptr;
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection(),
        xcb_get_property(connection(), 0, window, atom(property), XCB_ATOM_CARDINAL, 0, most),
        &error));
    const Owned<xcb_generic_error_t> held(error);
    if (!reply || reply->type != XCB_ATOM_CARDINAL || reply->format != 32)
        return std::nullopt;
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return std::vector<std::uint32_t>(values, values + reply->value_len);
}

void setText(xcb_window_t window, std::string_view property, xcb_atom_t type,
             std::string_view bytes) {
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, atom(property), type, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

std::optional<QPoint> rootPosition(xcb_window_t window, QPoint inside) {
    xcb_generic_error_t* error = nullptr;
    const Owned<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(
        connection(),
        xcb_translate_coordinates(connection(), window, root(),
                                  static_cast<std::int16_t>(inside.x()),
                                  static_cast<std::int16_t>(inside.y())),
        &error));
    const Owned<xcb_generic_error_t> held(error);
    if (!reply)
        return std::nullopt;
    return QPoint(reply->dst_x, reply->dst_y);
}

bool listen(xcb_window_t window, std::uint32_t events) {
    xcb_generic_error_t* error = nullptr;
    const Owned<xcb_get_window_attributes_reply_t> now(xcb_get_window_attributes_reply(
        connection(), xcb_get_window_attributes(connection(), window), &error));
    const Owned<xcb_generic_error_t> held(error);
    if (!now)
        return false;
    const std::uint32_t mask = now->your_event_mask | events;
    const Owned<xcb_generic_error_t> refused(xcb_request_check(
        connection(),
        xcb_change_window_attributes_checked(connection(), window, XCB_CW_EVENT_MASK, &mask)));
    return !refused;
}

} // namespace orrivane::desktop::xserver
