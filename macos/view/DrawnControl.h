#pragma once

#import <macos/view/PlainViews.h>

NS_ASSUME_NONNULL_BEGIN

/// A drawing that the user can act on, with the mouse also in a window that is not key.
@interface ORVDrawnControl : ORVDrawingView

@property (nonatomic, getter=isEnabled) BOOL enabled;
/// Whether the keyboard can reach it, if the user lets it reach more than text; at first not.
@property (nonatomic) BOOL takesKeyboard;

@end

NS_ASSUME_NONNULL_END
