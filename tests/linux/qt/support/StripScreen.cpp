#include "StripScreen.h"

#include <xcb/xtest.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace orrivane {

namespace {

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> own(Reply* reply) {
    return {reply, &std::free};
}

} // namespace

StripScreen::StripScreen()
    : connection_(xcb_connect(nullptr, nullptr))
    , screen_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data) {}

StripScreen::~StripScreen() {
    xcb_disconnect(connection_);
}

QImage StripScreen::read(const PixelRect& rect) {
    const auto reply = own(xcb_get_image_reply(
        connection_,
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root,
                      static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
                      static_cast<std::uint16_t>(rect.width),
                      static_cast<std::uint16_t>(rect.height), ~0U),
        nullptr));
    if (!reply)
        return {};
    return QImage(xcb_get_image_data(reply.get()), rect.width, rect.height, QImage::Format_RGB32)
        .copy();
}

PixelRect StripScreen::geometry(std::uint32_t window) {
    const auto reply =
        own(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
    return reply ? PixelRect{reply->x, reply->y, reply->width, reply->height} : PixelRect{};
}

bool StripScreen::isMapped(std::uint32_t window) {
    const auto reply = own(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool StripScreen::isOverrideRedirect(std::uint32_t window) {
    const auto reply = own(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, window), nullptr));
    return reply && reply->override_redirect != 0;
}

std::uint32_t StripScreen::focus() {
    const auto reply =
        own(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return reply ? reply->focus : 0;
}

std::vector<std::uint32_t> StripScreen::stack() {
    const auto reply =
        own(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, screen_->root), nullptr));
    if (!reply)
        return {};
    const auto* first = xcb_query_tree_children(reply.get());
    return {first, first + xcb_query_tree_children_length(reply.get())};
}

void StripScreen::place(std::uint32_t window, const PixelRect& rect, std::uint32_t above) {
    const std::array<std::uint32_t, 6> values{static_cast<std::uint32_t>(rect.x),
                                              static_cast<std::uint32_t>(rect.y),
                                              static_cast<std::uint32_t>(rect.width),
                                              static_cast<std::uint32_t>(rect.height),
                                              above,
                                              XCB_STACK_MODE_ABOVE};
    constexpr std::uint16_t geometry = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y |
                                       XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    constexpr std::uint16_t order = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
    std::free(xcb_request_check(
        connection_,
        xcb_configure_window_checked(connection_, window,
                                     static_cast<std::uint16_t>(geometry | (above ? order : 0)),
                                     values.data())));
}

std::uint32_t StripScreen::addWindow(const PixelRect& rect, std::uint32_t color) {
    const auto window = xcb_generate_id(connection_);
    const std::array<std::uint32_t, 2> values{color, 1};
    xcb_create_window(
        connection_, XCB_COPY_FROM_PARENT, window, screen_->root, static_cast<std::int16_t>(rect.x),
        static_cast<std::int16_t>(rect.y), static_cast<std::uint16_t>(rect.width),
        static_cast<std::uint16_t>(rect.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    std::free(xcb_request_check(connection_, xcb_map_window_checked(connection_, window)));
    return window;
}

void StripScreen::scribble(std::uint32_t window, const PixelRect& rect, std::uint32_t color) {
    const auto context = xcb_generate_id(connection_);
    xcb_create_gc(connection_, context, window, XCB_GC_FOREGROUND, &color);
    const xcb_rectangle_t area{static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
                               static_cast<std::uint16_t>(rect.width),
                               static_cast<std::uint16_t>(rect.height)};
    std::free(xcb_request_check(
        connection_, xcb_poly_fill_rectangle_checked(connection_, window, context, 1, &area)));
    xcb_free_gc(connection_, context);
}

void StripScreen::move(QPoint position) {
    xcb_test_fake_input(connection_, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, screen_->root,
                        static_cast<std::int16_t>(position.x()),
                        static_cast<std::int16_t>(position.y()), 0);
    focus(); // a round trip: the server has done it
}

void StripScreen::click(QPoint position, std::uint8_t button) {
    move(position);
    for (const auto kind : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
        xcb_test_fake_input(connection_, static_cast<std::uint8_t>(kind), button, XCB_CURRENT_TIME,
                            XCB_NONE, 0, 0, 0);
    focus();
}

void StripScreen::hold(bool down) {
    xcb_test_fake_input(connection_, down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, 1,
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    focus();
}

} // namespace orrivane
