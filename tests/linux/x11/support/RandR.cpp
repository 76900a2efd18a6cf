#include "RandR.h"

#include <linux/support/SetMonitor.h>

#include <stdexcept>

#include <xcb/randr.h>

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
    require(client,
            orrivane::setMonitor(client.raw(), {.root = client.root(),
                                                .name = client.atom(name),
                                                .x = static_cast<std::int16_t>(rect.x),
                                                .y = static_cast<std::int16_t>(rect.y),
                                                .width = static_cast<std::uint16_t>(rect.width),
                                                .height = static_cast<std::uint16_t>(rect.height),
                                                .primary = primary,
                                                .output = takesOutput ? onlyOutput(client) : 0}));
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
