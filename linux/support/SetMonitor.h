#pragma once

#include <cstdint>

#include <xcb/xcb.h>

namespace orrivane {

/// A monitor that a user defines by hand; the server takes it for a real one. In root pixels.
struct MonitorRequest {
    xcb_window_t root = XCB_NONE;
    xcb_atom_t name = XCB_ATOM_NONE; ///< identity: the same name again changes the monitor
    std::int16_t x = 0, y = 0;
    std::uint16_t width = 0, height = 0;
    bool primary = false;
    std::uint32_t output = 0; ///< the output it takes from the server's own monitors; 0: none
};

/// Sends RandR's SetMonitor (RandR 1.5, which the server must have); an error comes to
/// xcb_request_check. The library's own function reads memory that nobody filled in (libxcb up to
/// 1.15) and may end the program on it.
xcb_void_cookie_t setMonitor(xcb_connection_t* connection, const MonitorRequest& request);

} // namespace orrivane
