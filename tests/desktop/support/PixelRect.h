#pragma once

#include <algorithm>
#include <ostream>

namespace orrivane::e2e {

/// A place on the root window, in pixels from its top left corner.
struct PixelPoint {
    int x = 0;
    int y = 0;
    bool operator==(const PixelPoint&) const = default;
};

/// A rectangle on the root window, in pixels; `right()` and `bottom()` are outside it.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const PixelRect&) const = default;
    int right() const { return x + width; }
    int bottom() const { return y + height; }
    PixelPoint centre() const { return {x + width / 2, y + height / 2}; }
    bool contains(const PixelPoint& point) const {
        return point.x >= x && point.x < right() && point.y >= y && point.y < bottom();
    }
    bool contains(const PixelRect& other) const {
        return other.x >= x && other.right() <= right() && other.y >= y &&
               other.bottom() <= bottom();
    }
    PixelRect intersection(const PixelRect& other) const {
        const int left = std::max(x, other.x);
        const int top = std::max(y, other.y);
        return {left, top, std::max(0, std::min(right(), other.right()) - left),
                std::max(0, std::min(bottom(), other.bottom()) - top)};
    }
    bool intersects(const PixelRect& other) const {
        const PixelRect common = intersection(other);
        return common.width > 0 && common.height > 0;
    }
};

inline std::ostream& operator<<(std::ostream& out, const PixelRect& rect) {
    return out << '(' << rect.x << ", " << rect.y << ", " << rect.width << " x " << rect.height
               << ')';
}

inline std::ostream& operator<<(std::ostream& out, const PixelPoint& point) {
    return out << '(' << point.x << ", " << point.y << ')';
}

} // namespace orrivane::e2e
