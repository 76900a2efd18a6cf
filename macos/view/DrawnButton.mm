#import <macos/view/DrawnButton.h>

#import <macos/view/RunAction.h>

#include <utility>

@implementation ORVDrawnButton {
    orrivane::ViewAction _action;
    orrivane::ViewAction _secondary;
    BOOL _isPressed;
    BOOL _isSecondaryPressed;
}

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        self.accessibilityRole = NSAccessibilityButtonRole;
    }
    return self;
}

- (void)setAction:(const orrivane::ViewAction&)action
        secondary:(const orrivane::ViewAction&)secondary {
    _action = action;
    _secondary = secondary;
}

- (BOOL)act {
    if (!self.enabled || !self.window)
        return NO;
    orrivane::runAction(_action);
    return YES;
}

- (BOOL)actSecondary {
    if (!self.enabled || !self.window || !_secondary.run)
        return NO;
    orrivane::runAction(_secondary);
    return YES;
}

#pragma mark Mouse

- (BOOL)isUnder:(NSEvent*)event {
    const auto place = [self convertPoint:event.locationInWindow fromView:nil];
    return [self mouse:place inRect:self.bounds];
}

- (void)mouseDown:(NSEvent*)event {
    _isPressed = YES;
}

- (void)mouseUp:(NSEvent*)event {
    const bool pressed = std::exchange(_isPressed, NO);
    if (pressed && [self isUnder:event])
        [self act];
}

- (void)rightMouseDown:(NSEvent*)event {
    _isSecondaryPressed = static_cast<bool>(_secondary.run);
    if (!_isSecondaryPressed)
        [super rightMouseDown:event];
}

- (void)rightMouseUp:(NSEvent*)event {
    const bool pressed = std::exchange(_isSecondaryPressed, NO);
    if (!pressed)
        [super rightMouseUp:event];
    else if ([self isUnder:event])
        [self actSecondary];
}

#pragma mark Keyboard

- (void)keyDown:(NSEvent*)event {
    NSString* keys = event.charactersIgnoringModifiers;
    const unichar key = keys.length == 1 ? [keys characterAtIndex:0] : 0;
    if (key == ' ' || key == NSCarriageReturnCharacter || key == NSEnterCharacter)
        [self act];
    else
        [super keyDown:event];
}

#pragma mark Accessibility

- (BOOL)accessibilityPerformPress {
    return [self act];
}

- (BOOL)accessibilityPerformShowMenu {
    return [self actSecondary];
}

- (BOOL)isAccessibilitySelectorAllowed:(SEL)selector {
    if (selector == @selector(accessibilityPerformShowMenu))
        return static_cast<bool>(_secondary.run);
    return [super isAccessibilitySelectorAllowed:selector];
}

@end
