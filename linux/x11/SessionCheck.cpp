#include <linux/x11/SessionCheck.h>

#include <xcb/randr.h>

#include <cstdlib>
#include <string_view>

namespace orrivane::x11 {

namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value != '\0';
}

} // namespace

std::string SessionCheck::waylandSentence() {
    return "Orrivane cannot work under Wayland, which lets no program see or press another's "
           "status items; choose an X11 (Xorg) session at the login screen.";
}

std::optional<std::string> SessionCheck::problemOfEnvironment() {
    if (isSet("DISPLAY"))
        return std::nullopt;
    if (isSet("WAYLAND_DISPLAY"))
        return waylandSentence();
    return "There is no X server to connect to because DISPLAY is not set; start Orrivane inside "
           "an X11 session.";
}

bool SessionCheck::isXwayland(Connection& connection) {
    auto* raw = connection.raw();
    const auto until = Connection::deadline();
    constexpr std::string_view extension = "XWAYLAND";
    const auto query =
        xcb_query_extension(raw, static_cast<std::uint16_t>(extension.size()), extension.data());
    const auto monitors = xcb_randr_get_monitors(raw, connection.root(), 1);
    const auto extensionReply = connection.wait<xcb_query_extension_reply_t>(query, until);
    const auto monitorReply = connection.wait<xcb_randr_get_monitors_reply_t>(monitors, until);
    if (extensionReply && extensionReply->present != 0)
        return true;
    // Older servers have no such extension, but name their outputs after themselves.
    if (!monitorReply || monitorReply->nMonitors == 0)
        return false;
    const auto first = xcb_randr_get_monitors_monitors_iterator(monitorReply.get());
    const auto name =
        connection.wait<xcb_get_atom_name_reply_t>(xcb_get_atom_name(raw, first.data->name), until);
    return name &&
           std::string_view(xcb_get_atom_name_name(name.get()),
                            static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get())))
               .starts_with(extension);
}

} // namespace orrivane::x11
