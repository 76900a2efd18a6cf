#include <desktop/bar/Ewmh.h>

namespace orrivane::desktop::ewmh {

namespace {

constexpr std::uint32_t longestProperty = 1 << 16; // in units of four bytes
constexpr std::uint32_t byTheUser = 2;             // the source of a request

Owned<xcb_get_property_reply_t> read(xcb_window_t window, std::string_view property) {
    auto* connection = xserver::connection();
    xcb_generic_error_t* error = nullptr;
    Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection,
                               xcb_get_property(connection, 0, window, xserver::atom(property),
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty),
                               &error));
    const Owned<xcb_generic_error_t> held(error);
    return reply;
}

std::vector<std::uint32_t> numbers(std::string_view property) {
    const auto reply = read(xserver::root(), property);
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

void askManager(xcb_window_t about, std::string_view type,
                const std::array<std::uint32_t, 5>& data) {
    tell(xserver::root(), about, type, data,
         XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
}

} // namespace

xcb_window_t activeWindow() {
    const auto active = numbers("_NET_ACTIVE_WINDOW");
    return active.empty() ? static_cast<xcb_window_t>(XCB_NONE) : active.front();
}

std::vector<xcb_window_t> managedWindows() {
    return numbers("_NET_CLIENT_LIST");
}

void close(xcb_window_t window) {
    askManager(window, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, byTheUser, 0, 0, 0});
}

void showDesktop(bool shown) {
    askManager(xserver::root(), "_NET_SHOWING_DESKTOP", {shown ? 1U : 0U, 0, 0, 0, 0});
}

bool isShowingDesktop() {
    const auto showing = numbers("_NET_SHOWING_DESKTOP");
    return !showing.empty() && showing.front() != 0;
}

std::string text(xcb_window_t window, std::string_view property) {
    const auto reply = read(window, property);
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

void tell(xcb_window_t receiver, xcb_window_t about, std::string_view type,
          const std::array<std::uint32_t, 5>& data, std::uint32_t eventMask) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = about;
    message.type = xserver::atom(type);
    for (std::size_t i = 0; i < data.size(); ++i)
        message.data.data32[i] = data[i];
    auto* connection = xserver::connection();
    const auto cookie = xcb_send_event_checked(connection, 0, receiver, eventMask,
                                               reinterpret_cast<const char*>(&message));
    xcb_discard_reply(connection, cookie.sequence);
    xcb_flush(connection);
}

} // namespace orrivane::desktop::ewmh
