#pragma once

#include <string>

namespace orrivane::desktop {

/// Appends the line "who: what" to the file that $ORRIVANE_DESKTOP_LOG names, in one write, so
/// that lines of several processes never mix. Without the variable nothing is kept.
void logChoice(const std::string& who, const std::string& what);

} // namespace orrivane::desktop
