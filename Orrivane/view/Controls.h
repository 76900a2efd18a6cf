#pragma once

#include <Orrivane/view/Actions.h>
#include <Orrivane/view/Drawing.h>
#include <Orrivane/view/Roles.h>

#include <string>

namespace orrivane {

/// Text in the view's font and colour.
struct Text {
    std::string text = {}; ///< UTF-8
    bool wraps = true;     ///< grows downwards instead of being cut off

    friend bool operator==(const Text&, const Text&) = default;
};

/// Text with a symbol before it, both in the view's font and colour. An empty text leaves the
/// symbol alone.
struct Label {
    std::string text = {};
    SymbolName symbol = {};

    friend bool operator==(const Label&, const Label&) = default;
};

enum class ButtonStyle {
    plain,      ///< nothing but the drawing `label`, exactly as large as that
    borderless, ///< symbol and title without a frame
    bordered,   ///< the platform's ordinary push button with symbol and title
};

/// A button whose label is a drawing (plain) or a title with a symbol (else).
struct Button {
    ButtonStyle style = ButtonStyle::plain;
    Drawing label = {};
    ViewAction action = {};          ///< the primary button, or the keyboard
    ViewAction secondaryAction = {}; ///< the right button, on platforms that have one
    std::string title = {};          ///< may be empty beside a symbol
    SymbolName symbol = {};          ///< before the title; may be empty

    friend bool operator==(const Button&, const Button&) = default;
};

/// Something that is on or off. The user's change is reported and does not stay unless the next
/// value says so too.
struct Switch {
    std::string label = {};
    bool isOn = false;
    ValueAction<bool> changed = {};

    friend bool operator==(const Switch&, const Switch&) = default;
};

/// A number between two others. It never reports a value outside them, nor one between the steps.
struct Slider {
    std::string label = {};
    std::string minimumLabel = {}; ///< at the low end
    std::string maximumLabel = {}; ///< at the high end
    double value = 0;
    double minimum = 0;
    double maximum = 1;
    double step = 1; ///< counted from `minimum`
    ValueAction<double> changed = {};

    friend bool operator==(const Slider&, const Slider&) = default;
};

/// Turns as long as it is visible.
struct Spinner {
    friend bool operator==(const Spinner&, const Spinner&) = default;
};

} // namespace orrivane
