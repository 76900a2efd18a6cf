#pragma once

namespace orrivane {

/// All coordinates and lengths are 64-bit points unless a declaration says pixels.
struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle by the platform's rules: `origin` and `size` are raw and may describe a rectangle of
/// negative extent; every accessor answers for the standardised rectangle, whose extents are
/// positive. Which way y grows is the business of whoever made the rectangle.
struct Rect {
    Point origin;
    Size size;

    [[nodiscard]] constexpr double minX() const {
        return size.width < 0 ? origin.x + size.width : origin.x;
    }
    [[nodiscard]] constexpr double minY() const {
        return size.height < 0 ? origin.y + size.height : origin.y;
    }
    [[nodiscard]] constexpr double width() const {
        return size.width < 0 ? -size.width : size.width;
    }
    [[nodiscard]] constexpr double height() const {
        return size.height < 0 ? -size.height : size.height;
    }
    [[nodiscard]] constexpr double maxX() const { return minX() + width(); }
    [[nodiscard]] constexpr double maxY() const { return minY() + height(); }
    [[nodiscard]] constexpr double midX() const { return minX() + width() / 2; }
    [[nodiscard]] constexpr double midY() const { return minY() + height() / 2; }

    [[nodiscard]] constexpr Rect standardized() const {
        return {{minX(), minY()}, {width(), height()}};
    }

    /// Equal as rectangles: both are standardised first, then all four numbers compared exactly.
    friend constexpr bool operator==(const Rect& a, const Rect& b) {
        return a.minX() == b.minX() && a.minY() == b.minY() && a.width() == b.width() &&
               a.height() == b.height();
    }
};

} // namespace orrivane
