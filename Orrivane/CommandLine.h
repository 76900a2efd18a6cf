#pragma once

#include <Orrivane/support/Geometry.h>

#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace orrivane {

/// What the program was started for.
struct RunCommand {};
/// Print and end.
struct PrintCommand {
    std::string text;
};
/// Store the user's cutout, then end.
struct SetNotchCommand {
    Rect cutout; ///< pixels of the whole desktop, origin at its top left, y down
};
/// Print what the program sees and would do, then end.
struct DiagnoseCommand {
    bool json = false;
    bool capture = false; ///< also try to take a picture of every item
};
/// End the program that runs on this desktop.
struct QuitCommand {};
/// The arguments make no sense; `message` is one sentence that says which and what to do.
struct UsageError {
    std::string message;
};

using Command = std::variant<RunCommand, PrintCommand, SetNotchCommand, DiagnoseCommand,
                             QuitCommand, UsageError>;

struct CommandLine {
    /// `arguments` are without the program's name.
    static Command parse(std::span<const std::string_view> arguments);
    /// "x,y,width,height" with finite numbers, width and height greater than 0.
    static std::variant<Rect, UsageError> parseNotch(std::string_view text);
    static std::string_view version();
};

} // namespace orrivane
