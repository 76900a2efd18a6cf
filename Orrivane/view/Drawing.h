#pragma once

#include <Orrivane/support/Geometry.h>
#include <Orrivane/view/Image.h>
#include <Orrivane/view/Roles.h>

#include <variant>
#include <vector>

namespace orrivane {

enum class CornerStyle { circular, continuous };

struct RoundedRectangle {
    Rect rect;
    double cornerRadius = 0;
    CornerStyle corners = CornerStyle::circular;
    ColorRole fill = ColorRole::secondary;
    double opacity = 1;

    friend bool operator==(const RoundedRectangle&, const RoundedRectangle&) = default;
};

enum class ContentMode { stretch, fit, fill };

/// An image of `scale` pixels a point, resized into `rect` and centred there. With `fill` it keeps
/// its aspect ratio and may reach beyond `rect`.
struct DrawnImage {
    Rect rect;
    Image image;
    double scale = 1;
    ContentMode mode = ContentMode::stretch;

    friend bool operator==(const DrawnImage&, const DrawnImage&) = default;
};

/// Everything after it is cut off outside `rect`.
struct ClipRectangle {
    Rect rect;
    bool antialiased = false;

    friend bool operator==(const ClipRectangle&, const ClipRectangle&) = default;
};

using Primitive = std::variant<ClipRectangle, RoundedRectangle, DrawnImage>;

/// What a canvas shows, back to front. Points, origin at the canvas's top left, y down.
struct Drawing {
    Size size;
    std::vector<Primitive> primitives;

    friend bool operator==(const Drawing&, const Drawing&) = default;
};

} // namespace orrivane
