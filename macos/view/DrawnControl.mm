#import <macos/view/DrawnControl.h>

@implementation ORVDrawnControl

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        _enabled = YES;
        self.accessibilityElement = YES;
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

- (NSRect)focusRingMaskBounds {
    return self.bounds;
}

- (void)drawFocusRingMask {
    NSRectFill(self.bounds);
}

@end
