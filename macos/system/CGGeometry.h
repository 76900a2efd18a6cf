#pragma once

#include <Orrivane/support/Geometry.h>

#include <CoreGraphics/CoreGraphics.h>

#include <cmath>
#include <optional>

/// The same numbers in the other notation; neither origin nor direction changes. Reading is absent
/// where a number is infinite or none, as in the null rectangle.
namespace orrivane {

[[nodiscard]] inline CGPoint cgPoint(Point point) {
    return {point.x, point.y};
}

[[nodiscard]] inline std::optional<Point> pointFrom(CGPoint point) {
    if (!std::isfinite(point.x) || !std::isfinite(point.y))
        return std::nullopt;
    return Point{point.x, point.y};
}

[[nodiscard]] inline std::optional<Size> sizeFrom(CGSize size) {
    if (!std::isfinite(size.width) || !std::isfinite(size.height))
        return std::nullopt;
    return Size{size.width, size.height};
}

[[nodiscard]] inline std::optional<Rect> rectFrom(CGRect rect) {
    const auto origin = pointFrom(rect.origin);
    const auto size = sizeFrom(rect.size);
    if (!origin || !size)
        return std::nullopt;
    return Rect{*origin, *size};
}

} // namespace orrivane
