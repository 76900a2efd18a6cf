#include "ObserverWire.h"

#include <xcb/xtest.h>

namespace orrivane::e2e {

namespace {

/// GetImage answers in the server's byte order; both ends run on this machine.
Image decodeImage(const xcb_get_image_reply_t* reply, const PixelRect& area) {
    const auto* pixels = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply));
    const auto count = static_cast<std::size_t>(xcb_get_image_data_length(reply)) / 4;
    Image image{area.width, area.height, {pixels, pixels + count}};
    if (reply->depth != 32)
        for (std::uint32_t& pixel : image.pixels)
            pixel |= 0xff000000u;
    return image;
}

} // namespace

std::optional<Image> Observer::imageOf(xcb_window_t id) {
    const auto state = window(id);
    if (!state)
        return std::nullopt;
    const auto reply = wire_->reply(
        xcb_get_image_reply, xcb_get_image(wire_->connection, XCB_IMAGE_FORMAT_Z_PIXMAP, id, 0, 0,
                                           static_cast<std::uint16_t>(state->area.width),
                                           static_cast<std::uint16_t>(state->area.height), ~0u));
    return reply ? std::optional(decodeImage(reply.get(), state->area)) : std::nullopt;
}

Image Observer::imageOfRoot() {
    return imageOfRoot(rootArea());
}

Image Observer::imageOfRoot(const PixelRect& area) {
    const PixelRect part = area.intersection(rootArea());
    // IncludeInferiors is not needed: GetImage of a window takes its viewable inferiors along.
    const auto reply = wire_->reply(xcb_get_image_reply,
                                    xcb_get_image(wire_->connection, XCB_IMAGE_FORMAT_Z_PIXMAP,
                                                  root(), static_cast<std::int16_t>(part.x),
                                                  static_cast<std::int16_t>(part.y),
                                                  static_cast<std::uint16_t>(part.width),
                                                  static_cast<std::uint16_t>(part.height), ~0u));
    if (!reply)
        throw std::runtime_error("no image of the root window");
    return decodeImage(reply.get(), part);
}

PixelPoint Observer::pointer() {
    const auto reply =
        wire_->reply(xcb_query_pointer_reply, xcb_query_pointer(wire_->connection, root()));
    if (!reply)
        throw std::runtime_error("no pointer");
    return {reply->root_x, reply->root_y};
}

void Observer::requireInput() {
    // Using an extension the server lacks would end the connection.
    if (!hasExtension("XTEST"))
        throw std::runtime_error("the server lacks the XTEST extension");
}

void Observer::movePointer(const PixelPoint& place) {
    requireInput();
    wire_->require(xcb_test_fake_input_checked(
                       wire_->connection, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root(),
                       static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y), 0),
                   "moving the pointer");
}

void Observer::button(std::uint8_t number, bool down) {
    requireInput();
    wire_->require(xcb_test_fake_input_checked(wire_->connection,
                                               down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number,
                                               XCB_CURRENT_TIME, root(), 0, 0, 0),
                   "a mouse button");
}

void Observer::click(const PixelPoint& place, std::uint8_t number) {
    movePointer(place);
    button(number, true);
    button(number, false);
}

void Observer::key(xcb_keysym_t symbol, bool down) {
    requireInput();
    const xcb_setup_t* setup = xcb_get_setup(wire_->connection);
    const int first = setup->min_keycode;
    const int count = setup->max_keycode - first + 1;
    const auto mapping =
        wire_->reply(xcb_get_keyboard_mapping_reply,
                     xcb_get_keyboard_mapping(wire_->connection, setup->min_keycode,
                                              static_cast<std::uint8_t>(count)));
    if (!mapping)
        throw std::runtime_error("no keyboard mapping");
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    const int each = mapping->keysyms_per_keycode;
    for (int code = 0; code < count; ++code) {
        if (each > 0 && symbols[code * each] == symbol) {
            wire_->require(xcb_test_fake_input_checked(wire_->connection,
                                                       down ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
                                                       static_cast<std::uint8_t>(first + code),
                                                       XCB_CURRENT_TIME, root(), 0, 0, 0),
                           "a key");
            return;
        }
    }
    throw std::runtime_error("no key gives the symbol " + std::to_string(symbol));
}

void Observer::tapKey(xcb_keysym_t symbol, int times) {
    for (int i = 0; i < times; ++i) {
        key(symbol, true);
        key(symbol, false);
    }
}

void Observer::tapKeyWith(xcb_keysym_t modifier, xcb_keysym_t symbol, int times) {
    key(modifier, true);
    tapKey(symbol, times);
    key(modifier, false);
}

} // namespace orrivane::e2e
