#pragma once

#include <QtGui/qwindowdefs.h>

#include <cstdint>

class QImage;
class QRegion;
struct xcb_connection_t;

namespace orrivane {

/// A window's pixels on the X server, written through the toolkit's own connection. The toolkit's
/// backing store counts in its own points, rounded, and waits for the server now and then; this
/// does neither. On a platform other than X11 it stays closed.
class StripSurface {
  public:
    StripSurface() = default;
    StripSurface(const StripSurface&) = delete;
    StripSurface& operator=(const StripSurface&) = delete;
    ~StripSurface();

    /// Waits, bounded, until the server knows the window. False: it does not, or not yet. Without
    /// an X server there is nothing to wait for.
    bool open(WId window);
    [[nodiscard]] bool isOpen() const { return depth_ != 0; }
    /// Whether the window has an alpha channel.
    [[nodiscard]] bool canBlend() const { return !connection_ || depth_ == 32; }

    /// Shows that part of an image of premultiplied pixels whose top left is the window's.
    void present(const QImage& image, const QRegion& part);

  private:
    xcb_connection_t* connection_ = nullptr;
    std::uint32_t window_ = 0;
    std::uint32_t context_ = 0;
    int depth_ = 0; // bits a pixel; 0: closed
};

} // namespace orrivane
