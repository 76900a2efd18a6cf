#include "MapWatch.h"

#include <linux/x11/Reply.h>

#include <stdexcept>

#include <poll.h>

namespace orrivane::bench {

namespace {

using x11::Owned;

constexpr int largestHelper = 8; // pixels

} // namespace

xcb_atom_t atomOf(xcb_connection_t* connection, const std::string& name) {
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    if (!reply)
        throw std::runtime_error("the X server knows no atoms");
    return reply->atom;
}

MapWatch::MapWatch(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_) != 0)
        throw std::runtime_error("no X server at " + display);
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    windowType_ = atomOf(connection_, "_NET_WM_WINDOW_TYPE");
    tooltip_ = atomOf(connection_, "_NET_WM_WINDOW_TYPE_TOOLTIP");
    constexpr std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
    startAfresh();
}

MapWatch::~MapWatch() {
    xcb_disconnect(connection_);
}

void MapWatch::startAfresh() {
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    if (!reply)
        throw std::runtime_error("the X connection is lost");
    while (const Owned<xcb_generic_event_t> stale{xcb_poll_for_event(connection_)})
        ;
}

std::optional<MapWatch::Mapped> MapWatch::waitFor(const std::function<bool(xcb_window_t)>& wanted,
                                                  Clock::time_point until) {
    while (waitForInput(until)) {
        const auto now = Clock::now();
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
            if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY)
                continue;
            const auto& mapped = reinterpret_cast<const xcb_map_notify_event_t&>(*event);
            if (mapped.override_redirect != 0 && wanted(mapped.window) &&
                isProperPopup(mapped.window))
                return Mapped{mapped.window, now};
        }
    }
    return std::nullopt;
}

bool MapWatch::isProperPopup(xcb_window_t window) {
    const auto geometry = xcb_get_geometry(connection_, window);
    const auto type = xcb_get_property(connection_, 0, window, windowType_, XCB_ATOM_ATOM, 0, 1);
    const Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection_, geometry, nullptr));
    const Owned<xcb_get_property_reply_t> kind(xcb_get_property_reply(connection_, type, nullptr));
    if (!size || !kind || size->width <= largestHelper || size->height <= largestHelper)
        return false;
    return xcb_get_property_value_length(kind.get()) < 4 ||
           *static_cast<const xcb_atom_t*>(xcb_get_property_value(kind.get())) != tooltip_;
}

// A reply that isProperPopup waits for may bring events along that the descriptor does not show;
// the caller's loop takes those before it comes back here.
bool MapWatch::waitForInput(Clock::time_point until) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    pollfd descriptor{xcb_get_file_descriptor(connection_), POLLIN, 0};
    return left > 0 && poll(&descriptor, 1, static_cast<int>(left)) == 1;
}

} // namespace orrivane::bench
