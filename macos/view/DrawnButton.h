#pragma once

#import <macos/view/DrawnControl.h>

NS_ASSUME_NONNULL_BEGIN

/// A button that is nothing but its drawing. It acts when the mouse button is released over it.
@interface ORVDrawnButton : ORVDrawnControl

- (void)setAction:(const orrivane::ViewAction&)action
        secondary:(const orrivane::ViewAction&)secondary;

@end

NS_ASSUME_NONNULL_END
