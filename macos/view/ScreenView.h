#pragma once

#import <Cocoa/Cocoa.h>

#include <Orrivane/view/View.h>

NS_ASSUME_NONNULL_BEGIN

/// Shows a whole screen, top left first, and scrolls it where the place is too small. Its controls
/// are made when it gets a window or is asked for its height. Main thread only.
@interface ORVScreenView : NSView

/// `inWindow`: dialogs are sheets of the window; else they stand alone, as a popover wants it.
- (nonnull instancetype)initInWindow:(BOOL)inWindow NS_DESIGNATED_INITIALIZER;
- (nonnull instancetype)init; ///< in a window
- (nonnull instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@property (nonatomic, readonly) BOOL inWindow;
/// Sets what differs from the value before.
- (void)setRoot:(const orrivane::View&)root;
/// Runs the newest `appeared`, or `disappeared`, of every node that has one; twice in a row only
/// once.
- (void)setShown:(BOOL)shown;
/// The height that shows all of the content at that width, points; known before the first showing.
- (CGFloat)naturalHeightForWidth:(CGFloat)width;

@end

NS_ASSUME_NONNULL_END
