#pragma once

#include <Orrivane/support/Geometry.h>
#include <Orrivane/view/Image.h>
#include <Orrivane/view/Path.h>
#include <Orrivane/view/Roles.h>

#include <cstddef>
#include <string>
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
    double borderWidth = 0; ///< points; 0: filled, else only a border of this width inside `rect`

    friend bool operator==(const RoundedRectangle&, const RoundedRectangle&) = default;
};

/// A filled ellipse.
struct Oval {
    Rect rect;
    ColorRole fill = ColorRole::black;
    double opacity = 1;

    friend bool operator==(const Oval&, const Oval&) = default;
};

/// A rounded rectangle of what the system's menu bar is made of; elsewhere a light translucent
/// fill.
struct BarMaterial {
    Rect rect;
    double cornerRadius = 0;
    CornerStyle corners = CornerStyle::circular;

    friend bool operator==(const BarMaterial&, const BarMaterial&) = default;
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

/// One line of the system font, centred in `rect`.
struct DrawnText {
    Rect rect;
    std::string text = {}; ///< UTF-8
    double size = 13;      ///< points
    FontWeight weight = FontWeight::regular;
    ColorRole color = ColorRole::primary;
    double minimumScale = 1; ///< the smallest part of `size` it may shrink to in order to fit

    friend bool operator==(const DrawnText&, const DrawnText&) = default;
};

/// Everything after it is cut off outside `rect`, to the end of the group or of the drawing.
struct ClipRectangle {
    Rect rect;
    bool antialiased = false;

    friend bool operator==(const ClipRectangle&, const ClipRectangle&) = default;
};

/// The next `count` primitives are drawn as one picture at `opacity`. A group within them counts
/// as one primitive more than it has itself.
struct Group {
    double opacity = 1;
    std::size_t count = 0;

    friend bool operator==(const Group&, const Group&) = default;
};

using Primitive = std::variant<ClipRectangle, RoundedRectangle, DrawnImage, Oval, Path, DrawnText,
                               BarMaterial, Group>;

/// What a canvas shows, back to front. Points, origin at the canvas's top left, y down.
struct Drawing {
    Size size;
    std::vector<Primitive> primitives = {};
    /// Only its coverage counts: where it stands in a bar, the system gives it the colour.
    bool isTemplate = false;
    std::string accessibilityName = {}; ///< empty: decorative

    friend bool operator==(const Drawing&, const Drawing&) = default;
};

} // namespace orrivane
