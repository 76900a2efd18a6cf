#include "Wallpaper.h"

namespace orrivane::demo {

namespace {

struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;
};

constexpr Colour top{58, 92, 140};
constexpr Colour bottom{188, 140, 132};
constexpr std::uint32_t barColour = 0x22344f;
constexpr std::uint32_t bracketColour = 0x0b0f16;
constexpr int bracketThickness = 4;

std::uint32_t between(int at, int length) {
    const auto mix = [&](int from, int to) {
        return static_cast<std::uint32_t>(from + (to - from) * at / length);
    };
    return mix(top.red, bottom.red) << 16 | mix(top.green, bottom.green) << 8 |
           mix(top.blue, bottom.blue);
}

/// A pixmap of the root's size and the means to fill parts of it.
class Canvas {
  public:
    explicit Canvas(e2e::Observer& observer)
        : connection_(observer.connection())
        , pixmap_(xcb_generate_id(connection_))
        , context_(xcb_generate_id(connection_)) {
        const auto area = observer.rootArea();
        const auto depth = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root_depth;
        xcb_create_pixmap(connection_, depth, pixmap_, observer.root(),
                          static_cast<std::uint16_t>(area.width),
                          static_cast<std::uint16_t>(area.height));
        xcb_create_gc(connection_, context_, pixmap_, 0, nullptr);
    }
    ~Canvas() { xcb_free_gc(connection_, context_); }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void fill(const e2e::PixelRect& area, std::uint32_t colour) {
        xcb_change_gc(connection_, context_, XCB_GC_FOREGROUND, &colour);
        const xcb_rectangle_t rectangle{
            static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
            static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height)};
        xcb_poly_fill_rectangle(connection_, pixmap_, context_, 1, &rectangle);
    }

    xcb_pixmap_t pixmap() const { return pixmap_; }

  private:
    xcb_connection_t* connection_;
    xcb_pixmap_t pixmap_;
    xcb_gcontext_t context_;
};

} // namespace

void paintWallpaper(e2e::Observer& observer, int barHeight, const e2e::PixelRect& cutout) {
    const e2e::PixelRect screen = observer.rootArea();
    Canvas canvas(observer);
    for (int y = barHeight; y < screen.height; ++y)
        canvas.fill({0, y, screen.width, 1}, between(y - barHeight, screen.height - barHeight));
    canvas.fill({0, 0, screen.width, barHeight}, barColour);
    if (cutout.width > 0)
        canvas.fill({cutout.x, cutout.bottom(), cutout.width, bracketThickness}, bracketColour);

    xcb_connection_t* connection = observer.connection();
    const xcb_pixmap_t pixmap = canvas.pixmap();
    xcb_change_window_attributes(connection, observer.root(), XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection, 0, observer.root(), 0, 0, 0, 0);
    // Panels that want to look transparent copy their background from here.
    for (const char* property : {"ESETROOT_PMAP_ID", "_XROOTPMAP_ID"})
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, observer.root(),
                            observer.atom(property), XCB_ATOM_PIXMAP, 32, 1, &pixmap);
    xcb_flush(connection);
}

} // namespace orrivane::demo
