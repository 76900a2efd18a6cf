#include "RandR.h"

#include <sys/uio.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

#include <array>
#include <stdexcept>

namespace orrivane::x11 {

namespace {

void require(XClient& client, xcb_void_cookie_t cookie) {
    if (Owned<xcb_generic_error_t>(xcb_request_check(client.raw(), cookie)))
        throw std::runtime_error("the server refused a change of its screens");
}

xcb_randr_output_t onlyOutput(XClient& client) {
    const Owned<xcb_randr_get_screen_resources_current_reply_t> reply(
        xcb_randr_get_screen_resources_current_reply(
            client.raw(), xcb_randr_get_screen_resources_current(client.raw(), client.root()),
            nullptr));
    if (!reply || reply->num_outputs != 1)
        throw std::runtime_error("the server has not exactly one output");
    return *xcb_randr_get_screen_resources_current_outputs(reply.get());
}

} // namespace

void setMonitor(XClient& client, const std::string& name, const PixelRect& rect, bool primary,
                bool takesOutput) {
    struct {
        xcb_randr_set_monitor_request_t request;
        xcb_randr_monitor_info_t monitor;
        xcb_randr_output_t output;
    } whole{};
    whole.request.window = client.root();
    auto& monitor = whole.monitor;
    monitor.name = client.atom(name);
    monitor.primary = primary ? 1 : 0;
    monitor.nOutput = takesOutput ? 1 : 0;
    whole.output = takesOutput ? onlyOutput(client) : xcb_randr_output_t{0};
    monitor.x = static_cast<std::int16_t>(rect.x);
    monitor.y = static_cast<std::int16_t>(rect.y);
    monitor.width = static_cast<std::uint16_t>(rect.width);
    monitor.height = static_cast<std::uint16_t>(rect.height);
    monitor.width_in_millimeters = 300;
    monitor.height_in_millimeters = 200;
    const auto length = sizeof whole - (takesOutput ? 0 : sizeof whole.output);
    // The library's own function sends a part that it never filled in (1.15).
    const xcb_protocol_request_t description{1, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
    std::array<iovec, 3> parts{{{}, {}, {&whole, length}}}; // two for the library's use
    const auto sequence =
        xcb_send_request(client.raw(), XCB_REQUEST_CHECKED, &parts[2], &description);
    require(client, {sequence});
}

void deleteMonitor(XClient& client, const std::string& name) {
    require(client,
            xcb_randr_delete_monitor_checked(client.raw(), client.root(), client.atom(name)));
}

void setBlank(XClient& client, bool blank) {
    const auto mode =
        static_cast<std::uint8_t>(blank ? XCB_SCREEN_SAVER_ACTIVE : XCB_SCREEN_SAVER_RESET);
    require(client, xcb_force_screen_saver_checked(client.raw(), mode));
}

} // namespace orrivane::x11
