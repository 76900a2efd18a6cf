#pragma once

#include <Orrivane/view/Drawing.h>

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace orrivane {

/// What happens when the user acts. Two actions are never told apart: a renderer takes the newest
/// one with every value, whether anything visible changed or not.
struct ViewAction {
    std::function<void()> run; ///< empty: nothing happens

    friend bool operator==(const ViewAction&, const ViewAction&) { return true; }
};

enum class ButtonStyle { plain };
enum class Alignment { center };

struct View;

/// A row, left to right.
struct HorizontalStack {
    double spacing = 0; ///< points between neighbours
    Alignment alignment = Alignment::center;
    std::vector<View> children;

    friend bool operator==(const HorizontalStack&, const HorizontalStack&);
};

/// A button whose label is a drawing of exactly the drawing's size.
struct Button {
    ButtonStyle style = ButtonStyle::plain;
    Drawing label;
    ViewAction action;          ///< the primary button, or the keyboard
    ViewAction secondaryAction; ///< the right button, on platforms that have one
    friend bool operator==(const Button&, const Button&) = default;
};

/// One node of what a screen shows: a plain value that a platform's renderer turns into controls.
struct View {
    std::uint32_t key = 0;         ///< identity among siblings that come and go; else 0
    std::string tooltip;           ///< empty: none
    std::string accessibilityName; ///< empty: decorative
    std::variant<HorizontalStack, Button> node;

    friend bool operator==(const View&, const View&) = default;
};

inline bool operator==(const HorizontalStack& a, const HorizontalStack& b) {
    return a.spacing == b.spacing && a.alignment == b.alignment && a.children == b.children;
}

} // namespace orrivane
