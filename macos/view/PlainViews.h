#pragma once

#import <Cocoa/Cocoa.h>

#include <Orrivane/view/View.h>

#include <optional>

NS_ASSUME_NONNULL_BEGIN

/// A place for other views: origin at the top left, y down.
@interface ORVFlippedView : NSView
@end

/// The same with something behind what stands in it.
@interface ORVBackgroundView : ORVFlippedView
- (void)setBackground:(const std::optional<orrivane::Background>&)background;
@end

/// Shows a drawing at its own size, or stretched to the view's.
@interface ORVDrawingView : ORVFlippedView
/// Draws anew only if the drawing differs.
- (void)setDrawing:(const orrivane::Drawing&)drawing;
- (const orrivane::Drawing&)drawing;
/// Set where a view behind this one shows the system's own material.
@property (nonatomic) BOOL leavesOutLeadingMaterial;
@end

/// Shows a canvas at whatever size it has, bar material at the very back as the system's own.
@interface ORVCanvasView : ORVFlippedView
- (void)setContent:(const orrivane::CanvasContent&)content;
@end

NS_ASSUME_NONNULL_END
