#pragma once

#include <linux/support/PixelImage.h>
#include <linux/support/PixelRect.h>
#include <linux/x11/Connection.h>

#include <memory>

namespace orrivane::x11 {

/// Reads pixels of windows and pixmaps. Sending and receiving are apart, so that many reads cost
/// one round trip.
class PixelReader {
  public:
    /// A read under way.
    struct Read {
        xcb_get_image_cookie_t image{};
        PixelRect rect;
    };

    explicit PixelReader(Connection& connection)
        : connection_(connection) {}

    /// `rect` is inside the drawable.
    [[nodiscard]] Read send(xcb_drawable_t drawable, const PixelRect& rect);
    /// As `send`, of what a redirected window holds whatever lies over it; `border` is that of the
    /// window, `rect` lies inside it.
    [[nodiscard]] Read sendRedirected(std::uint32_t window, int border, PixelRect rect);
    /// Null when the drawable is gone, does not hold `rect`, or is of a depth without colours. Of
    /// 24 bits every pixel is opaque (the rest is padding of any value), 32 are premultiplied.
    [[nodiscard]] std::shared_ptr<PixelImage> receive(const Read& read, Deadline until);

  private:
    Connection& connection_;
};

} // namespace orrivane::x11
