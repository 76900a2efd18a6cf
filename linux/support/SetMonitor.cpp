#include "SetMonitor.h"

#include <array>

#include <sys/uio.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

namespace orrivane {

xcb_void_cookie_t setMonitor(xcb_connection_t* connection, const MonitorRequest& request) {
    struct {
        xcb_randr_set_monitor_request_t head;
        xcb_randr_monitor_info_t monitor;
        xcb_randr_output_t output;
    } whole{};
    whole.head.window = request.root;
    auto& monitor = whole.monitor;
    monitor.name = request.name;
    monitor.primary = request.primary ? 1 : 0;
    monitor.nOutput = request.output == 0 ? 0 : 1;
    whole.output = request.output;
    monitor.x = request.x;
    monitor.y = request.y;
    monitor.width = request.width;
    monitor.height = request.height;
    monitor.width_in_millimeters = 300;
    monitor.height_in_millimeters = 200;
    const auto length = sizeof whole - (request.output == 0 ? sizeof whole.output : 0);
    const xcb_protocol_request_t description{1, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
    std::array<iovec, 3> parts{{{}, {}, {&whole, length}}}; // two for the library's use
    return {xcb_send_request(connection, XCB_REQUEST_CHECKED, &parts[2], &description)};
}

} // namespace orrivane
