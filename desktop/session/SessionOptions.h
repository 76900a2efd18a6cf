#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orrivane::desktop {

/// A screen with a camera housing at its top edge; pixels, origin at the screen's top left.
struct Panel {
    int width = 0;
    int height = 0;
    int notchX = 0;
    int notchY = 0;
    int notchWidth = 0; ///< 0: no notch
    int notchHeight = 0;

    friend bool operator==(const Panel&, const Panel&) = default;

    /// The panels of laptops that have a notch, by their size in inches: "13" to "16". Their size
    /// and the rows beside the housing are known; its width is told by no kernel and the same here
    /// for all, 185 points, in the middle. Drawn at `scale` pixels a point; empty for other names.
    static Panel known(std::string_view name, double scale);
};

/// What the desktop's session was asked for.
struct SessionOptions {
    Panel panel = Panel::known("14", 1);
    double scale = 1; ///< pixels a point
    bool dark = false;
    bool headless = false;
    bool windows = true;
    int screens = 1;
    std::vector<std::string> items; ///< kinds of status items
    std::string config;             ///< the user's configuration folder; empty: a passing one
    std::string log;                ///< where choices are written; empty: a passing file
    std::vector<std::string> program;

    /// Every kind of status item there is.
    static const std::vector<std::string>& allItems();
};

/// Print and end.
struct SessionText {
    std::string text;
    int status = 0; ///< 0, or 2 for arguments that make no sense
};

/// `arguments` are without the program's name.
std::variant<SessionOptions, SessionText> parseSession(std::span<const std::string_view> arguments);

} // namespace orrivane::desktop
