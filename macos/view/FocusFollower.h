#pragma once

#import <Cocoa/Cocoa.h>

NS_ASSUME_NONNULL_BEGIN

/// Scrolls what gets the keyboard into view, as long as it lives. The system does so for text only.
@interface ORVFocusFollower : NSObject

/// Follows the views of `window` that stand in `root`. To be let go of before the window is.
- (instancetype)initWithWindow:(NSWindow*)window root:(NSView*)root;

@end

NS_ASSUME_NONNULL_END
