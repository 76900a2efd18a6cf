#include "FakeTray.h"

#include <bench/support/MapWatch.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace orrivane::bench {

namespace {

constexpr std::uint16_t side = 24; // pixels
constexpr std::uint16_t barHeight = 37;
constexpr std::uint16_t dockWidth = 32000;

xcb_connection_t* connect(const std::string& display) {
    auto* connection = xcb_connect(display.c_str(), nullptr);
    if (xcb_connection_has_error(connection) != 0)
        throw std::runtime_error("no X server at " + display);
    return connection;
}

xcb_screen_t* screenOf(xcb_connection_t* connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

xcb_window_t makeWindow(xcb_connection_t* connection, xcb_window_t parent, std::int16_t x,
                        std::int16_t y, std::uint16_t width, std::uint16_t height) {
    const auto id = xcb_generate_id(connection);
    constexpr std::uint32_t overrideRedirect = 1;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, id, parent, x, y, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &overrideRedirect);
    xcb_map_window(connection, id);
    return id;
}

void synchronize(xcb_connection_t* connection) {
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    if (xcb_connection_has_error(connection) != 0)
        throw std::runtime_error("the fake tray lost its X connection");
}

} // namespace

FakeTray::FakeTray(const std::string& display, std::size_t iconCount)
    : panel_(connect(display))
    , application_(connect(display))
    , embeddingInfo_(atomOf(application_, "_XEMBED_INFO")) {
    makeDock();
    for (std::size_t i = 0; i < iconCount; ++i)
        makeIcon(i);
    synchronize(application_);
}

FakeTray::~FakeTray() {
    xcb_disconnect(application_);
    xcb_disconnect(panel_);
}

void FakeTray::makeDock() {
    const auto root = screenOf(panel_)->root;
    dock_ = makeWindow(panel_, root, 0, 0, dockWidth, barHeight);
    const auto dockType = atomOf(panel_, "_NET_WM_WINDOW_TYPE_DOCK");
    xcb_change_property(panel_, XCB_PROP_MODE_REPLACE, dock_, atomOf(panel_, "_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &dockType);
    xcb_set_selection_owner(panel_, dock_, atomOf(panel_, "_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    synchronize(panel_);
}

void FakeTray::makeIcon(std::size_t index) {
    const auto x = static_cast<std::int16_t>(index * side);
    const auto socket = makeWindow(panel_, dock_, x, 1, side, side);
    // The other client's request may overtake this one's.
    synchronize(panel_);
    const auto icon = makeWindow(application_, socket, 0, 0, side, side);
    constexpr std::array<std::uint32_t, 2> embedding{0, 1};
    xcb_change_property(application_, XCB_PROP_MODE_REPLACE, icon, embeddingInfo_, embeddingInfo_,
                        32, 2, embedding.data());
    const std::string name = std::string("fake-icon") + '\0' + iconClass + '\0';
    xcb_change_property(application_, XCB_PROP_MODE_REPLACE, icon, XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(name.size()), name.data());
}

} // namespace orrivane::bench
