#include "RequestCounter.h"

#include <linux/x11/Reply.h>

#include <cstring>
#include <stdexcept>

namespace orrivane::bench {

namespace {

using x11::Owned;

// A question that no part of the program under measurement asks of its own accord here.
constexpr std::uint8_t markOpcode = XCB_GET_KEYBOARD_CONTROL;
constexpr std::uint8_t startOfData = 4;
constexpr std::uint8_t fromClient = 1;

xcb_record_range_t everyRequest() {
    xcb_record_range_t range{};
    range.core_requests = {0, 127};
    range.ext_requests.major = {128, 255};
    range.ext_requests.minor = {0, 65535};
    return range;
}

} // namespace

RequestCounter::RequestCounter(const std::string& display, std::uint32_t client)
    : control_(xcb_connect(display.c_str(), nullptr))
    , data_(xcb_connect(display.c_str(), nullptr)) {
    const auto* extension = xcb_get_extension_data(control_, &xcb_record_id);
    if (!extension || extension->present == 0)
        throw std::runtime_error("the X server lacks RECORD");
    context_ = xcb_generate_id(control_);
    const auto range = everyRequest();
    const Owned<xcb_generic_error_t> error(xcb_request_check(
        control_, xcb_record_create_context_checked(control_, context_, 0, 1, 1, &client, &range)));
    if (error)
        throw std::runtime_error("the X server records nothing");
    enabled_ = xcb_record_enable_context(data_, context_);
    const Owned<xcb_record_enable_context_reply_t> first(
        xcb_record_enable_context_reply(data_, enabled_, nullptr));
    if (!first || first->category != startOfData)
        throw std::runtime_error("recording did not start");
}

RequestCounter::~RequestCounter() {
    xcb_record_disable_context(control_, context_);
    xcb_flush(control_);
    xcb_disconnect(data_);
    xcb_disconnect(control_);
}

std::size_t RequestCounter::take(xcb_connection_t* client) {
    const Owned<xcb_get_keyboard_control_reply_t> mark(
        xcb_get_keyboard_control_reply(client, xcb_get_keyboard_control(client), nullptr));
    std::size_t count = 0;
    for (bool marked = false; !marked;) {
        const Owned<xcb_record_enable_context_reply_t> reply(
            xcb_record_enable_context_reply(data_, enabled_, nullptr));
        if (!reply)
            throw std::runtime_error("recording broke off");
        if (reply->category != fromClient)
            continue;
        const auto found = tally(*reply);
        count += found.count;
        marked = found.marked;
    }
    return count;
}

RequestCounter::Tally RequestCounter::tally(const xcb_record_enable_context_reply_t& reply) {
    const auto* bytes = xcb_record_enable_context_data(&reply);
    const auto size = static_cast<std::size_t>(xcb_record_enable_context_data_length(&reply));
    Tally result;
    for (std::size_t at = 0; at + 4 <= size && !result.marked;) {
        std::uint16_t units = 0;
        std::memcpy(&units, bytes + at + 2, sizeof units);
        result.marked = bytes[at] == markOpcode;
        result.count += result.marked ? 0U : 1U;
        if (units == 0)
            throw std::runtime_error("a request of unknown length was recorded");
        at += std::size_t{units} * 4;
    }
    return result;
}

} // namespace orrivane::bench
