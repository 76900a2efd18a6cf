#pragma once

#include <Orrivane/view/Roles.h>

#include <QColor>
#include <QPalette>

namespace orrivane {

/// Whether text is lighter than the window it stands on.
bool isDark(const QPalette& palette);

/// The colour of a role, in the light or dark variant that goes with `palette`.
QColor roleColor(ColorRole role, const QPalette& palette);

} // namespace orrivane
