#include <linux/qt/StripSurface.h>

#include <QGuiApplication>
#include <QImage>
#include <QRegion>

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <vector>

namespace orrivane {

namespace {

constexpr std::chrono::milliseconds longestWait{500};
// Well inside the shortest request length that every server takes.
constexpr int pixelsARequest = 32 * 1024;

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
using GeometryReply = std::unique_ptr<xcb_get_geometry_reply_t, Free>;

// Another client may hold the server: the toolkit's reader thread takes the reply off the socket,
// so there is nothing to wait on but the reply itself.
GeometryReply geometry(xcb_connection_t* connection, std::uint32_t window) {
    const auto cookie = xcb_get_geometry(connection, window);
    xcb_flush(connection);
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    while (std::chrono::steady_clock::now() < deadline) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(connection, cookie.sequence, &reply, &error) != 0) {
            std::free(error);
            return GeometryReply(static_cast<xcb_get_geometry_reply_t*>(reply));
        }
        if (xcb_connection_has_error(connection) != 0)
            return nullptr;
        ::poll(nullptr, 0, 1);
    }
    xcb_discard_reply(connection, cookie.sequence);
    return nullptr;
}

} // namespace

StripSurface::~StripSurface() {
    if (isOpen() && qGuiApp)
        xcb_free_gc(connection_, context_);
}

bool StripSurface::open(WId window) {
    if (isOpen())
        return true;
    const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    connection_ = application ? application->connection() : nullptr;
    if (!connection_)
        return true;
    window_ = static_cast<std::uint32_t>(window);
    const auto reply = geometry(connection_, window_);
    if (!reply)
        return false;
    depth_ = reply->depth;
    context_ = xcb_generate_id(connection_);
    const std::uint32_t noExposures = 0;
    xcb_create_gc(connection_, context_, window_, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
    return true;
}

void StripSurface::present(const QImage& image, const QRegion& part) {
    if (!isOpen())
        return;
    std::vector<QRgb> block;
    for (const auto& rect : part& image.rect()) {
        const int rows = std::max(1, pixelsARequest / rect.width());
        for (int top = rect.top(); top <= rect.bottom(); top += rows) {
            const int height = std::min(rows, rect.bottom() + 1 - top);
            block.clear();
            for (int y = top; y < top + height; ++y) {
                const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
                block.insert(block.end(), line + rect.left(), line + rect.right() + 1);
            }
            xcb_put_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context_,
                          static_cast<std::uint16_t>(rect.width()),
                          static_cast<std::uint16_t>(height),
                          static_cast<std::int16_t>(rect.left()), static_cast<std::int16_t>(top), 0,
                          static_cast<std::uint8_t>(depth_),
                          static_cast<std::uint32_t>(block.size() * sizeof(QRgb)),
                          reinterpret_cast<const std::uint8_t*>(block.data()));
        }
    }
    xcb_flush(connection_);
}

} // namespace orrivane
