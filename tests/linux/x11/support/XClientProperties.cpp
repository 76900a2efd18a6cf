#include "XClient.h"

#include <stdexcept>

namespace orrivane::x11 {

void XClient::setAtoms(xcb_window_t window, const std::string& property, const std::string& value) {
    setNumbers(window, property, {atom(value)}, "ATOM");
}

void XClient::setNumbers(xcb_window_t window, const std::string& property,
                         const std::vector<std::uint32_t>& values, const std::string& type) {
    require(xcb_change_property_checked(connection_, XCB_PROP_MODE_REPLACE, window, atom(property),
                                        atom(type), 32, static_cast<std::uint32_t>(values.size()),
                                        values.data()),
            property);
}

void XClient::setText(xcb_window_t window, const std::string& property, const std::string& value) {
    require(xcb_change_property_checked(connection_, XCB_PROP_MODE_REPLACE, window, atom(property),
                                        XCB_ATOM_STRING, 8,
                                        static_cast<std::uint32_t>(value.size()), value.data()),
            property);
}

void XClient::remove(xcb_window_t window, const std::string& property) {
    require(xcb_delete_property_checked(connection_, window, atom(property)), "no " + property);
}

void XClient::own(const std::string& selection, xcb_window_t window) {
    require(xcb_set_selection_owner_checked(connection_, window, atom(selection), XCB_CURRENT_TIME),
            selection);
}

void XClient::announce(const std::string& selection, xcb_window_t owner) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = root();
    message.type = atom("MANAGER");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = atom(selection);
    message.data.data32[2] = owner;
    require(xcb_send_event_checked(connection_, 0, root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                                   reinterpret_cast<const char*>(&message)),
            "a message");
}

} // namespace orrivane::x11
