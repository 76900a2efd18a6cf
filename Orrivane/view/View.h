#pragma once

#include <Orrivane/view/Canvas.h>
#include <Orrivane/view/ConfirmationDialog.h>
#include <Orrivane/view/Containers.h>
#include <Orrivane/view/Controls.h>
#include <Orrivane/view/Tile.h>

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace orrivane {

/// Room around a view, points.
struct Insets {
    double top = 0;
    double leading = 0;
    double bottom = 0;
    double trailing = 0;

    friend bool operator==(const Insets&, const Insets&) = default;
};

/// The room that a view takes, without its padding. What is absent is as large as the content.
struct Frame {
    std::optional<double> width = {};  ///< points
    std::optional<double> height = {}; ///< points
    bool fillsWidth = false;           ///< all the width there is

    friend bool operator==(const Frame&, const Frame&) = default;
};

/// What lies behind a view and its padding.
struct Background {
    ColorRole fill = ColorRole::secondary;
    double opacity = 1;
    double cornerRadius = 0; ///< points
    CornerStyle corners = CornerStyle::circular;

    friend bool operator==(const Background&, const Background&) = default;
};

using ViewNode = std::variant<HorizontalStack, Button, VerticalStack, Overlay, GroupBox, Disclosure,
                              VerticalScroll, HorizontalScroll, Spacer, Text, Label, Switch, Slider,
                              Spinner, Canvas, Tile, ConfirmationDialog>;

/// One node of what a screen shows: a plain value that a platform's renderer turns into controls.
/// The tree of a screen keeps its shape: what is not there now is there and not `visible`. Only
/// siblings with a `key` come, go and change places.
struct View {
    std::uint32_t key = 0;    ///< identity among siblings that come and go; else 0
    std::string tooltip = {}; ///< empty: none
    std::string accessibilityName =
        {}; ///< empty: the node's own text; without one it is decorative
    ViewNode node = {};

    // Of this node alone.
    FontRole font = FontRole::body;
    FontWeight weight = FontWeight::regular;
    ColorRole color = ColorRole::primary;

    // Of this node and all below it.
    bool isEnabled = true;
    bool isVisible = true; ///< false: it takes no room either
    double opacity = 1;

    Frame frame = {};
    Insets padding = {};
    std::optional<Background> background = {};

    /// The view is shown: with its window's first showing, and again after `disappeared`.
    ViewAction appeared = {};
    /// The view was taken away: its popover closed. A window that is only hidden keeps its views.
    ViewAction disappeared = {};

    friend bool operator==(const View&, const View&) = default;
};

// Here, where a View is complete; written out, because not every compiler can default them yet.
inline bool operator==(const HorizontalStack& a, const HorizontalStack& b) {
    return a.spacing == b.spacing && a.alignment == b.alignment && a.children == b.children;
}
inline bool operator==(const VerticalStack& a, const VerticalStack& b) {
    return a.spacing == b.spacing && a.alignment == b.alignment && a.children == b.children;
}
inline bool operator==(const Overlay& a, const Overlay& b) {
    return a.alignment == b.alignment && a.children == b.children;
}
inline bool operator==(const GroupBox& a, const GroupBox& b) {
    return a.title == b.title && a.spacing == b.spacing && a.children == b.children;
}
inline bool operator==(const Disclosure& a, const Disclosure& b) {
    return a.label == b.label && a.isExpanded == b.isExpanded && a.children == b.children;
}
inline bool operator==(const VerticalScroll& a, const VerticalScroll& b) {
    return a.spacing == b.spacing && a.children == b.children;
}
inline bool operator==(const HorizontalScroll& a, const HorizontalScroll& b) {
    return a.spacing == b.spacing && a.children == b.children;
}

} // namespace orrivane
