#include "ObserverWire.h"

#include <cstring>

#include <xcb/res.h>

namespace orrivane::e2e {

namespace {

xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screens.rem > 0; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

} // namespace

Observer::Observer(const std::string& display)
    : wire_(std::make_unique<Wire>()) {
    int number = 0;
    wire_->connection = xcb_connect(display.c_str(), &number);
    if (xcb_connection_has_error(wire_->connection) != 0) {
        xcb_disconnect(wire_->connection);
        throw std::runtime_error("no connection to display " + display);
    }
    wire_->screen = screenOf(wire_->connection, number);
}

Observer::~Observer() {
    xcb_disconnect(wire_->connection);
}

xcb_window_t Observer::root() const {
    return wire_->screen->root;
}

xcb_connection_t* Observer::connection() const {
    return wire_->connection;
}

PixelRect Observer::rootArea() const {
    // Asked anew: the size in the connection's setup is that of the moment of connecting.
    const auto geometry =
        wire_->reply(xcb_get_geometry_reply, xcb_get_geometry(wire_->connection, root()));
    if (!geometry)
        throw std::runtime_error("the root window has no geometry");
    return {0, 0, geometry->width, geometry->height};
}

xcb_atom_t Observer::atom(const std::string& name) {
    if (const auto known = wire_->atoms.find(name); known != wire_->atoms.end())
        return known->second;
    const auto reply =
        wire_->reply(xcb_intern_atom_reply,
                     xcb_intern_atom(wire_->connection, 0, static_cast<std::uint16_t>(name.size()),
                                     name.c_str()));
    if (!reply)
        throw std::runtime_error("no atom " + name);
    return wire_->atoms[name] = reply->atom;
}

std::string Observer::Wire::atomName(xcb_atom_t atom) {
    const auto answer = reply(xcb_get_atom_name_reply, xcb_get_atom_name(connection, atom));
    if (!answer)
        return {};
    return {xcb_get_atom_name_name(answer.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(answer.get()))};
}

Reply<xcb_get_property_reply_t> Observer::Wire::property(xcb_window_t window, xcb_atom_t name,
                                                         xcb_atom_t type) {
    return reply(xcb_get_property_reply,
                 xcb_get_property(connection, 0, window, name, type, 0, 4096));
}

bool Observer::hasExtension(const std::string& name) {
    const auto reply =
        wire_->reply(xcb_query_extension_reply,
                     xcb_query_extension(wire_->connection, static_cast<std::uint16_t>(name.size()),
                                         name.c_str()));
    return reply && reply->present != 0;
}

bool Observer::sameClient(xcb_window_t a, xcb_window_t b) const {
    const std::uint32_t mask = ~xcb_get_setup(wire_->connection)->resource_id_mask;
    return (a & mask) == (b & mask);
}

std::optional<pid_t> Observer::pidOf(xcb_window_t id) {
    if (!hasExtension("X-Resource"))
        throw std::runtime_error("the server lacks the X-Resource extension");
    // The server answers the other requests only after the version was agreed on.
    wire_->reply(xcb_res_query_version_reply, xcb_res_query_version(wire_->connection, 1, 2));
    const xcb_res_client_id_spec_t asked{id, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto reply = wire_->reply(xcb_res_query_client_ids_reply,
                                    xcb_res_query_client_ids(wire_->connection, 1, &asked));
    if (!reply)
        return std::nullopt;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        if (xcb_res_client_id_value_value_length(ids.data) >= 1)
            return static_cast<pid_t>(*xcb_res_client_id_value_value(ids.data));
    }
    return std::nullopt;
}

std::optional<Observer::Cardinals> Observer::cardinals(xcb_window_t id,
                                                       const std::string& property) {
    const auto reply = wire_->property(id, atom(property));
    if (!reply || reply->type == XCB_NONE || reply->format != 32)
        return std::nullopt;
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return Cardinals(values, values + reply->value_len);
}

void Observer::setCardinals(xcb_window_t id, const std::string& property, const Cardinals& values) {
    wire_->require(xcb_change_property_checked(wire_->connection, XCB_PROP_MODE_REPLACE, id,
                                               atom(property), XCB_ATOM_CARDINAL, 32,
                                               static_cast<std::uint32_t>(values.size()),
                                               values.data()),
                   "setting " + property);
}

void Observer::deleteProperty(xcb_window_t id, const std::string& property) {
    wire_->require(xcb_delete_property_checked(wire_->connection, id, atom(property)),
                   "deleting " + property);
}

std::vector<PixelRect> Observer::cutouts() {
    const Cardinals values = cardinals(root(), "_ORRIVANE_DISPLAY_CUTOUT").value_or(Cardinals{});
    std::vector<PixelRect> result;
    for (std::size_t i = 0; i + 3 < values.size(); i += 4) {
        result.push_back({static_cast<int>(values[i]), static_cast<int>(values[i + 1]),
                          static_cast<int>(values[i + 2]), static_cast<int>(values[i + 3])});
    }
    return result;
}

void Observer::setCutouts(const std::vector<PixelRect>& cutouts) {
    Cardinals values;
    for (const PixelRect& cutout : cutouts)
        for (int value : {cutout.x, cutout.y, cutout.width, cutout.height})
            values.push_back(static_cast<std::uint32_t>(value));
    if (values.empty())
        deleteProperty(root(), "_ORRIVANE_DISPLAY_CUTOUT");
    else
        setCardinals(root(), "_ORRIVANE_DISPLAY_CUTOUT", values);
}

std::optional<xcb_window_t> Observer::activeWindow() {
    const auto reply = wire_->property(root(), atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    if (!reply || reply->format != 32 || reply->value_len == 0)
        return std::nullopt;
    const auto window = *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
    return window == XCB_NONE ? std::nullopt : std::optional(window);
}

xcb_window_t Observer::focusWindow() {
    const auto reply =
        wire_->reply(xcb_get_input_focus_reply, xcb_get_input_focus(wire_->connection));
    return reply ? reply->focus : XCB_NONE;
}

void Observer::grabServer() {
    wire_->require(xcb_grab_server_checked(wire_->connection), "grabbing the server");
}

void Observer::ungrabServer() {
    wire_->require(xcb_ungrab_server_checked(wire_->connection), "releasing the server");
}

} // namespace orrivane::e2e
