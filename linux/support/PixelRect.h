#pragma once

namespace orrivane {

/// A rectangle in root-window pixels, origin at the root's top left, y down.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] int right() const { return x + width; }
    [[nodiscard]] int bottom() const { return y + height; }
    [[nodiscard]] bool isEmpty() const { return width <= 0 || height <= 0; }
    [[nodiscard]] bool contains(int px, int py) const {
        return px >= x && px < right() && py >= y && py < bottom();
    }
    [[nodiscard]] bool contains(const PixelRect& other) const {
        return other.x >= x && other.right() <= right() && other.y >= y &&
               other.bottom() <= bottom();
    }
    [[nodiscard]] bool intersects(const PixelRect& other) const {
        return x < other.right() && other.x < right() && y < other.bottom() && other.y < bottom();
    }

    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

} // namespace orrivane
