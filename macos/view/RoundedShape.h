#pragma once

#include <Orrivane/view/Drawing.h>

#include <CoreGraphics/CoreGraphics.h>

namespace orrivane {

/// Adds the outline of `rect` with its corners to the context's path, in the context's units.
void addRoundedRectangle(CGContextRef context, CGRect rect, double cornerRadius,
                         CornerStyle corners);

} // namespace orrivane
