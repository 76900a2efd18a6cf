#pragma once

#include <Orrivane/view/Drawing.h>

namespace orrivane {

/// The picture of the program's own status item: a figure in stride. Stateless.
struct MenuBarIcon {
    /// 22 × 18 points, a template, named after the program.
    static Drawing image();
};

} // namespace orrivane
