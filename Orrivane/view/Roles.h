#pragma once

#include <string>

namespace orrivane {

/// A colour by what it stands for; every platform resolves it for light and dark.
enum class ColorRole {
    primary,   ///< ordinary text
    secondary, ///< subordinate text, placeholders and thin borders
    accent,    ///< the user's accent colour
    black,
    gray,
    green,
    orange,
    red,
};

/// A text style by what it is for, largest first; every platform resolves it to its own fonts.
enum class FontRole { title, headline, body, callout, footnote, caption, smallestCaption };

enum class FontWeight {
    regular, ///< for a role: whatever weight the platform gives that role
    medium,
};

/// A system symbol under the name that the symbol set of macOS gives it, such as
/// "checkmark.circle". Other platforms resolve it to the icon of the same meaning.
using SymbolName = std::string;

} // namespace orrivane
