#pragma once

#import <Cocoa/Cocoa.h>

NS_ASSUME_NONNULL_BEGIN

/// Text that is only read.
@interface ORVTextField : NSTextField

/// Text that does not wrap is one line and is cut off at its end.
- (instancetype)initWrapping:(BOOL)wraps;
/// Both: whether it differs from before.
- (BOOL)showText:(NSString*)text;
- (BOOL)showFont:(NSFont*)font;
/// The alignment rectangle's size in a place of that width, points; nothing for no text.
- (CGSize)sizeAtWidth:(CGFloat)width;

@end

NS_ASSUME_NONNULL_END
