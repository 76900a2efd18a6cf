#include <desktop/bar/TrayWire.h>

#include <desktop/bar/IconHints.h>

#include <xcb/xfixes.h>

namespace orrivane::desktop {

namespace {

constexpr std::uint32_t longestProperty = 256; // in units of four bytes
constexpr std::uint32_t xembedMapped = 1;

Owned<xcb_get_property_reply_t> take(xcb_connection_t* connection,
                                     xcb_get_property_cookie_t cookie) {
    xcb_generic_error_t* error = nullptr;
    Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, &error));
    const Owned<xcb_generic_error_t> held(error);
    return reply;
}

std::vector<std::uint32_t> words(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
    return {first, first + reply->value_len};
}

// A client that has not told its version of it cannot use the extension.
bool announceExtensions(xcb_connection_t* connection) {
    const auto* extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return false;
    const Owned<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, 1, 0), nullptr));
    return version != nullptr;
}

std::string_view text(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply)), reply->value_len};
}

} // namespace

std::unique_ptr<TrayWire> TrayWire::open(std::string& problem) {
    int screenNumber = 0;
    auto* connection = xcb_connect(nullptr, &screenNumber);
    std::unique_ptr<TrayWire> wire(new TrayWire(connection, screenNumber));
    if (xcb_connection_has_error(connection) != 0 || !wire->internAtoms(screenNumber) ||
        !announceExtensions(connection)) {
        problem = "there is no X server with the XFIXES extension to show the menu bar on";
        return nullptr;
    }
    return wire;
}

TrayWire::TrayWire(xcb_connection_t* connection, int screenNumber)
    : connection_(connection) {
    if (xcb_connection_has_error(connection) != 0)
        return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber)
        xcb_screen_next(&screens);
    screen_ = screens.data;
}

bool TrayWire::internAtoms(int screenNumber) {
    const std::array<std::string, static_cast<std::size_t>(TrayAtom::count)> names{
        "_ORRIVANE_BAR_COLORS",
        "_ORRIVANE_ITEM_METRICS",
        "MANAGER",
        "_NET_SYSTEM_TRAY_ORIENTATION",
        "_NET_SYSTEM_TRAY_COLORS",
        "_NET_SYSTEM_TRAY_OPCODE",
        "_NET_SYSTEM_TRAY_S" + std::to_string(screenNumber),
        "_XEMBED",
        "_XEMBED_INFO",
    };
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
    for (std::size_t i = 0; i < names.size(); ++i)
        cookies[i] = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(names[i].size()),
                                     names[i].data());
    bool complete = true;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const Owned<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection_, cookies[i], nullptr));
        atoms_[i] = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
        complete = complete && reply;
    }
    return complete;
}

std::optional<IconFacts> TrayWire::factsOf(xcb_window_t icon) const {
    const auto ask = [&](xcb_atom_t property) {
        return xcb_get_property(connection_, 0, icon, property, XCB_GET_PROPERTY_TYPE_ANY, 0,
                                longestProperty);
    };
    const auto geometryAsked = xcb_get_geometry(connection_, icon);
    const auto hintsAsked = ask(XCB_ATOM_WM_NORMAL_HINTS);
    const auto classAsked = ask(XCB_ATOM_WM_CLASS);
    const auto embedAsked = ask(atom(TrayAtom::xembedInfo));
    xcb_generic_error_t* error = nullptr;
    const Owned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection_, geometryAsked, &error));
    const Owned<xcb_generic_error_t> held(error);
    const auto hints = take(connection_, hintsAsked);
    const auto name = take(connection_, classAsked);
    const auto embed = take(connection_, embedAsked);
    if (!geometry)
        return std::nullopt;
    const auto info = words(embed.get());
    return IconFacts{classOf(text(name.get())), declaredWidth(words(hints.get())), geometry->width,
                     info.size() < 2 || (info[1] & xembedMapped) != 0};
}

void TrayWire::setCardinals(xcb_window_t window, TrayAtom property,
                            const std::vector<std::uint32_t>& values) const {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property),
                        XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(values.size()),
                        values.data());
}

void TrayWire::send(xcb_window_t to, xcb_atom_t type, const std::array<std::uint32_t, 5>& data,
                    std::uint32_t eventMask) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = to;
    message.type = type;
    for (std::size_t i = 0; i < data.size(); ++i)
        message.data.data32[i] = data[i];
    ignore(xcb_send_event_checked(connection_, 0, to, eventMask,
                                  reinterpret_cast<const char*>(&message)));
}

} // namespace orrivane::desktop
