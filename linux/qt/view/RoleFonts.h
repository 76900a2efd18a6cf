#pragma once

#include <Orrivane/view/Roles.h>

#include <QFont>

namespace orrivane {

/// The font of a role, derived from the user's own font.
QFont roleFont(FontRole role, FontWeight weight);

} // namespace orrivane
