#pragma once

#include <Orrivane/support/Geometry.h>

#include <linux/support/PixelRect.h>

#include <cmath>

namespace orrivane::x11 {

/// Between root pixels (top left, y down) and the core's points. The core's global origin is the
/// primary screen's top left corner vertically and the root's left edge horizontally, because x is
/// the same in both of its systems.
struct Space {
    double scale = 1;   ///< root pixels a point
    int primaryTop = 0; ///< root pixels
    int primaryBottom = 0;

    /// Global points, top-left origin, y down.
    [[nodiscard]] Rect toGlobal(const Rect& pixels) const {
        return {{pixels.minX() / scale, (pixels.minY() - primaryTop) / scale},
                {pixels.width() / scale, pixels.height() / scale}};
    }
    [[nodiscard]] Rect toGlobal(const PixelRect& pixels) const { return toGlobal(real(pixels)); }

    /// A screen frame: points, bottom-left origin, y up.
    [[nodiscard]] Rect toFrame(const Rect& pixels) const {
        return {{pixels.minX() / scale, (primaryBottom - pixels.maxY()) / scale},
                {pixels.width() / scale, pixels.height() / scale}};
    }
    [[nodiscard]] Rect toFrame(const PixelRect& pixels) const { return toFrame(real(pixels)); }

    /// Back from a screen frame, each edge rounded by itself.
    [[nodiscard]] PixelRect toPixels(const Rect& frame) const {
        const int left = static_cast<int>(std::lround(frame.minX() * scale));
        const int right = static_cast<int>(std::lround(frame.maxX() * scale));
        const int top = static_cast<int>(std::lround(primaryBottom - frame.maxY() * scale));
        const int bottom = static_cast<int>(std::lround(primaryBottom - frame.minY() * scale));
        return {left, top, right - left, bottom - top};
    }

    [[nodiscard]] static Rect real(const PixelRect& pixels) {
        return {{static_cast<double>(pixels.x), static_cast<double>(pixels.y)},
                {static_cast<double>(pixels.width), static_cast<double>(pixels.height)}};
    }

    friend bool operator==(const Space&, const Space&) = default;
};

} // namespace orrivane::x11
