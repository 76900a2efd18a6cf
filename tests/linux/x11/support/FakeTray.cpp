#include "FakeTray.h"

namespace orrivane::x11 {

FakeTray::FakeTray(const std::string& display, const PixelRect& dock)
    : client(display)
    , owner_(client.create({.area = {-100, -100, 10, 10}, .overrideRedirect = true}))
    , dock_(client.create({.area = dock, .overrideRedirect = true, .background = 0x303030})) {
    client.setType(dock_, "DOCK");
    client.setText(dock_, "WM_CLASS", std::string("fake-tray\0Fake Tray\0", 20));
    client.map(dock_);
    client.own("_NET_SYSTEM_TRAY_S0", owner_);
    client.announce("_NET_SYSTEM_TRAY_S0", owner_);
}

xcb_window_t FakeTray::addSocket(const PixelRect& inside, xcb_window_t parent) {
    const auto socket = client.create(
        {.parent = parent == XCB_NONE ? dock_ : parent, .area = inside, .background = 0x404040});
    client.map(socket);
    return socket;
}

void FakeTray::embed(xcb_window_t icon, xcb_window_t socket, int x, int y) {
    client.reparent(icon, socket, x, y);
    client.map(icon);
}

xcb_window_t FakeTray::makeIcon(XClient& application, int width, int height,
                                const NewWindow& like) {
    auto options = like;
    options.area = {0, 0, width, height};
    const auto icon = application.create(options);
    application.setXembedInfo(icon);
    application.setText(icon, "WM_CLASS", std::string("fake-icon\0Fake Icon\0", 20));
    return icon;
}

xcb_window_t FakeTray::add(XClient& application, const PixelRect& inside, const NewWindow& like) {
    const auto icon = makeIcon(application, inside.width, inside.height, like);
    embed(icon, addSocket(inside));
    return icon;
}

} // namespace orrivane::x11
