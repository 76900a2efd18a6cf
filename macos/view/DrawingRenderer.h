#pragma once

#import <Cocoa/Cocoa.h>

#include <Orrivane/view/Drawing.h>

NS_ASSUME_NONNULL_BEGIN

namespace orrivane {

/// Draws into `context`, whose unit is a point, in `place` (points, y down: the context is
/// flipped). The colours are those of the current drawing appearance. `leadingMaterial` false
/// leaves out the bar material that the drawing begins with: whoever draws shows the system's own
/// there.
void draw(const Drawing& drawing, CGContextRef context, CGRect place, bool leadingMaterial = true);

/// A picture for the system to show at any scale: drawn anew for each, a template where the
/// drawing is one, and named for assistive technology.
NSImage* drawnImage(const Drawing& drawing);
/// The same, always a template, such as for the status item.
NSImage* drawnTemplateImage(const Drawing& drawing);
/// A bitmap of `scale` pixels a point, such as what follows the pointer in a drag.
NSImage* drawnImage(const Drawing& drawing, CGFloat scale);

} // namespace orrivane

NS_ASSUME_NONNULL_END
