#import <macos/view/DrawnControl.h>

@implementation ORVDrawnControl

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        _enabled = YES;
        self.accessibilityElement = YES;
        self.accessibilityEnabled = YES;
    }
    return self;
}

- (void)setEnabled:(BOOL)enabled {
    if (_enabled == enabled)
        return;
    _enabled = enabled;
    self.accessibilityEnabled = enabled;
    [self.window invalidateCursorRectsForView:self];
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    return YES;
}

- (BOOL)mouseDownCanMoveWindow {
    return NO;
}

- (BOOL)acceptsFirstResponder {
    return self.takesKeyboard && self.enabled && NSApp.fullKeyboardAccessEnabled;
}

- (void)setFrameSize:(NSSize)size {
    const bool differs = !NSEqualSizes(size, self.frame.size);
    [super setFrameSize:size];
    if (differs)
        [self noteFocusRingMaskChanged];
}

- (NSRect)focusRingMaskBounds {
    return self.bounds;
}

- (void)drawFocusRingMask {
    NSRectFill(self.bounds);
}

@end
