#include "TestWindow.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include <unistd.h>
#include <xcb/shape.h>

namespace orrivane::e2e {

TestWindow::TestWindow(Observer& observer, const Options& options)
    : observer_(observer) {
    xcb_connection_t* connection = observer_.connection();
    id_ = xcb_generate_id(connection);
    const std::array<std::uint32_t, 2> values{options.colour, options.overrideRedirect ? 1u : 0u};
    require(xcb_create_window_checked(connection, XCB_COPY_FROM_PARENT, id_, observer_.root(),
                                      static_cast<std::int16_t>(options.area.x),
                                      static_cast<std::int16_t>(options.area.y),
                                      static_cast<std::uint16_t>(std::max(1, options.area.width)),
                                      static_cast<std::uint16_t>(std::max(1, options.area.height)),
                                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data()),
            "making a window");
    setText(XCB_ATOM_WM_NAME, options.name);
    setText(XCB_ATOM_WM_CLASS, options.name + '\0' + options.name + '\0');
    observer_.setCardinals(id_, "_NET_WM_PID", {static_cast<std::uint32_t>(getpid())});
    if (options.fullScreen) {
        const xcb_atom_t state = observer_.atom("_NET_WM_STATE_FULLSCREEN");
        require(xcb_change_property_checked(connection, XCB_PROP_MODE_REPLACE, id_,
                                            observer_.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, 1,
                                            &state),
                "asking for the full screen");
    }
}

TestWindow::~TestWindow() {
    xcb_destroy_window(observer_.connection(), id_);
    xcb_flush(observer_.connection());
}

void TestWindow::require(xcb_void_cookie_t cookie, const std::string& what) {
    xcb_generic_error_t* error = xcb_request_check(observer_.connection(), cookie);
    std::free(error);
    if (error != nullptr) {
        throw std::runtime_error("the X server refused: " + what);
    }
}

void TestWindow::setText(xcb_atom_t property, const std::string& text) {
    require(xcb_change_property_checked(observer_.connection(), XCB_PROP_MODE_REPLACE, id_,
                                        property, XCB_ATOM_STRING, 8,
                                        static_cast<std::uint32_t>(text.size()), text.data()),
            "naming a window");
}

void TestWindow::map() {
    require(xcb_map_window_checked(observer_.connection(), id_), "mapping a window");
}

void TestWindow::unmap() {
    require(xcb_unmap_window_checked(observer_.connection(), id_), "unmapping a window");
}

void TestWindow::raise() {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    require(xcb_configure_window_checked(observer_.connection(), id_, XCB_CONFIG_WINDOW_STACK_MODE,
                                         &above),
            "raising a window");
}

void TestWindow::refuseInput() {
    require(xcb_shape_rectangles_checked(observer_.connection(), XCB_SHAPE_SO_SET,
                                         XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, id_, 0, 0,
                                         0, nullptr),
            "emptying an input shape");
}

bool TestWindow::isManaged() {
    return observer_.cardinals(id_, "WM_STATE").has_value();
}

WindowState TestWindow::state() {
    const auto state = observer_.window(id_);
    if (!state) {
        throw std::runtime_error("the test's own window is gone");
    }
    return *state;
}

} // namespace orrivane::e2e
