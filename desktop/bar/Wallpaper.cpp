#include <desktop/bar/Wallpaper.h>

#include <desktop/support/XServer.h>

#include <algorithm>

namespace orrivane::desktop {

namespace {

constexpr auto lookProperty = "_ORRIVANE_WALLPAPER"; // number, dark, width, height

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Link = std::unique_ptr<xcb_connection_t, Disconnect>;

// In bands, because a request has a greatest length.
void upload(xcb_connection_t* link, xcb_pixmap_t pixmap, std::uint8_t depth, const QImage& image) {
    const auto context = xcb_generate_id(link);
    xcb_create_gc(link, context, pixmap, 0, nullptr);
    const auto rowBytes = static_cast<std::uint32_t>(image.bytesPerLine());
    constexpr std::uint32_t mostBytes = 200'000;
    const int rows = static_cast<int>(std::max<std::uint32_t>(1, mostBytes / rowBytes));
    for (int y = 0; y < image.height(); y += rows) {
        const int here = std::min(rows, image.height() - y);
        xcb_put_image(link, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context,
                      static_cast<std::uint16_t>(image.width()), static_cast<std::uint16_t>(here),
                      0, static_cast<std::int16_t>(y), 0, depth,
                      rowBytes * static_cast<std::uint32_t>(here), image.constScanLine(y));
    }
    xcb_free_gc(link, context);
}

void freePixmapOf(xcb_connection_t* link, xcb_window_t root, xcb_atom_t property) {
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        link, xcb_get_property(link, 0, root, property, XCB_ATOM_PIXMAP, 0, 1), nullptr));
    if (reply && reply->format == 32 && reply->value_len == 1)
        xcb_kill_client(link, *static_cast<std::uint32_t*>(xcb_get_property_value(reply.get())));
}

} // namespace

int Wallpaper::shownNumber() {
    const auto look = xserver::cardinals(xserver::root(), lookProperty);
    return look && look->size() == 4 && look->front() < count ? static_cast<int>(look->front()) : 0;
}

void Wallpaper::install(QSize size) const {
    const std::vector<std::uint32_t> look{static_cast<std::uint32_t>(number_), dark_ ? 1U : 0U,
                                          static_cast<std::uint32_t>(size.width()),
                                          static_cast<std::uint32_t>(size.height())};
    if (xserver::cardinals(xserver::root(), lookProperty) == look)
        return;
    const auto property = xserver::atom("_XROOTPMAP_ID");
    // The picture belongs to a connection of its own, which leaves it behind when it closes.
    const Link link(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(link.get()) != 0)
        return;
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(link.get())).data;
    if (screen->root_depth != 24 && screen->root_depth != 32)
        return;
    const auto pixmap = xcb_generate_id(link.get());
    xcb_create_pixmap(link.get(), screen->root_depth, pixmap, screen->root,
                      static_cast<std::uint16_t>(size.width()),
                      static_cast<std::uint16_t>(size.height()));
    upload(link.get(), pixmap, screen->root_depth, paint(size));
    freePixmapOf(link.get(), screen->root, property);
    xcb_change_window_attributes(link.get(), screen->root, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(link.get(), 0, screen->root, 0, 0, 0, 0);
    for (const auto name : {property, xserver::atom("ESETROOT_PMAP_ID")})
        xcb_change_property(link.get(), XCB_PROP_MODE_REPLACE, screen->root, name, XCB_ATOM_PIXMAP,
                            32, 1, &pixmap);
    xcb_change_property(link.get(), XCB_PROP_MODE_REPLACE, screen->root,
                        xserver::atom(lookProperty), XCB_ATOM_CARDINAL, 32,
                        static_cast<std::uint32_t>(look.size()), look.data());
    xcb_set_close_down_mode(link.get(), XCB_CLOSE_DOWN_RETAIN_PERMANENT);
    // Nothing is lost on the way when the connection closes after an answer.
    const Owned<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(link.get(), xcb_get_input_focus(link.get()), nullptr));
}

} // namespace orrivane::desktop
