#pragma once

#include <Orrivane/support/Geometry.h>
#include <Orrivane/view/Roles.h>

#include <variant>
#include <vector>

namespace orrivane {

/// Begins a subpath; every path begins with one.
struct MoveTo {
    Point to;

    friend bool operator==(const MoveTo&, const MoveTo&) = default;
};

struct LineTo {
    Point to;

    friend bool operator==(const LineTo&, const LineTo&) = default;
};

/// A cubic curve.
struct CurveTo {
    Point control1;
    Point control2;
    Point to;

    friend bool operator==(const CurveTo&, const CurveTo&) = default;
};

/// A straight line back to where the subpath began.
struct ClosePath {
    friend bool operator==(const ClosePath&, const ClosePath&) = default;
};

using PathElement = std::variant<MoveTo, LineTo, CurveTo, ClosePath>;

/// A path, filled or stroked. Strokes have round caps and round joins.
struct Path {
    std::vector<PathElement> elements = {};
    double strokeWidth = 0; ///< points; 0: filled
    ColorRole color = ColorRole::black;
    double opacity = 1;

    friend bool operator==(const Path&, const Path&) = default;
};

} // namespace orrivane
