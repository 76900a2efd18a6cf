#include <linux/hosts/IconNames.h>

#include <string_view>

namespace orrivane::x11 {

namespace {

constexpr std::uint32_t longestName = 256; // 32-bit units

std::string textIn(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply)),
            static_cast<std::size_t>(xcb_get_property_value_length(reply))};
}

} // namespace

std::vector<std::string> namesOf(Connection& connection,
                                 const std::vector<std::uint32_t>& windows) {
    constexpr std::string_view property = "_NET_WM_NAME";
    auto* raw = connection.raw();
    const auto until = Connection::deadline();
    const auto atom = connection.wait<xcb_intern_atom_reply_t>(
        xcb_intern_atom(raw, 1, static_cast<std::uint16_t>(property.size()), property.data()),
        until);
    struct Asked {
        xcb_get_property_cookie_t modern;
        xcb_get_property_cookie_t plain;
    };
    const auto ask = [&](std::uint32_t window, xcb_atom_t name) {
        return xcb_get_property(raw, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, longestName);
    };
    std::vector<Asked> asked;
    for (const auto window : windows)
        asked.push_back({ask(window, atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE}),
                         ask(window, XCB_ATOM_WM_NAME)});
    std::vector<std::string> names;
    for (const auto& [modern, plain] : asked) {
        auto name = textIn(connection.wait<xcb_get_property_reply_t>(modern, until).get());
        const auto other = textIn(connection.wait<xcb_get_property_reply_t>(plain, until).get());
        names.push_back(name.empty() ? other : name);
    }
    return names;
}

} // namespace orrivane::x11
