#import <macos/view/TileView.h>

#import <macos/appkit/Conversions.h>
#import <macos/view/DrawingRenderer.h>
#import <macos/view/RunAction.h>

#include <algorithm>
#include <cmath>
#include <utility>

NSNotificationName const ORVTileDragDidEndNotification = @"ORVTileDragDidEnd";

namespace {

constexpr CGFloat dragDistance = 3;    // points
constexpr CGFloat revealDistance = 24; // what is shown of the neighbours in a scrolled row

constexpr unichar escapeKey = 0x1b;
constexpr NSEventModifierFlags heldKeys = NSEventModifierFlagOption | NSEventModifierFlagControl |
                                          NSEventModifierFlagShift | NSEventModifierFlagCommand;

// Also keeps the source of the one drag alive should its view go meanwhile.
ORVTileView* dragSource = nil;

} // namespace

@implementation ORVTileView {
    orrivane::Tile _tile;
    NSPoint _pressed; // in the window
    BOOL _isPressed;
    BOOL _isCarried; // by the keyboard
}

+ (BOOL)dragIsInProgress {
    return dragSource != nil;
}

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        self.takesKeyboard = YES;
        [self registerForDraggedTypes:@[ NSPasteboardTypeString ]];
        self.accessibilityRole = NSAccessibilityImageRole;
        self.accessibilityHelp =
            @"Hold Option and press Left or Right to move it, then release Option";
    }
    return self;
}

- (void)setTile:(const orrivane::Tile&)tile {
    _tile = tile;
    [self setDrawing:tile.content];
}

- (void)resetCursorRects {
    // The system does not clip it: in a scrolled row it would reach over what stands beside it.
    const auto shown = NSIntersectionRect(self.bounds, self.visibleRect);
    if (self.enabled && !NSIsEmptyRect(shown))
        [self addCursorRect:shown cursor:NSCursor.openHandCursor];
}

#pragma mark Source

// Not passed on: the superview must not take the drag.
- (void)mouseDown:(NSEvent*)event {
    _isPressed = self.enabled;
    _pressed = event.locationInWindow;
}

- (void)mouseUp:(NSEvent*)event {
    _isPressed = NO;
}

- (void)mouseDragged:(NSEvent*)event {
    const auto now = event.locationInWindow;
    if (!_isPressed || dragSource ||
        std::hypot(now.x - _pressed.x, now.y - _pressed.y) < dragDistance)
        return;
    _isPressed = NO;
    [self beginDragWithEvent:event];
}

- (void)beginDragWithEvent:(NSEvent*)event {
    NSString* payload = orrivane::toNSString(_tile.source.payload);
    NSDraggingItem* item = [[NSDraggingItem alloc] initWithPasteboardWriter:payload];
    // Before it is dimmed.
    [item setDraggingFrame:self.bounds contents:[self picture]];
    dragSource = self;
    orrivane::runAction(_tile.source.began);
    NSDraggingSession* session = [self beginDraggingSessionWithItems:@[ item ]
                                                               event:event
                                                              source:self];
    session.animatesToStartingPositionsOnCancelOrFail = NO;
}

- (NSImage*)picture {
    __block NSImage* image = nil;
    const auto scale = std::max<CGFloat>(1, self.window.backingScaleFactor);
    [self.effectiveAppearance performAsCurrentDrawingAppearance:^{
      image = orrivane::drawnImage(self.drawing, scale);
    }];
    return image;
}

- (NSDragOperation)draggingSession:(NSDraggingSession*)session
    sourceOperationMaskForDraggingContext:(NSDraggingContext)context {
    return context == NSDraggingContextWithinApplication ? NSDragOperationMove
                                                         : NSDragOperationNone;
}

// With Option or Control the system would ask for a copy or a link, which nobody offers.
- (BOOL)ignoreModifierKeysForDraggingSession:(NSDraggingSession*)session {
    return YES;
}

- (void)draggingSession:(NSDraggingSession*)session
           endedAtPoint:(NSPoint)point
              operation:(NSDragOperation)operation {
    // What follows may move the pointer itself: not before the system is done with it.
    orrivane::onMainThread([] {
        ORVTileView* kept = dragSource;
        dragSource = nil;
        if (!kept)
            return;
        orrivane::runAction(kept->_tile.source.ended);
        [NSNotificationCenter.defaultCenter postNotificationName:ORVTileDragDidEndNotification
                                                          object:kept];
    });
}

#pragma mark Destination

- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)info {
    return [self draggingUpdated:info];
}

- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)info {
    if (!self.enabled || ![info.draggingPasteboard stringForType:NSPasteboardTypeString])
        return NSDragOperationNone;
    const auto place = [self convertPoint:info.draggingLocation fromView:nil];
    orrivane::runAction(_tile.target.updated, double(place.x));
    [self scrollRectToVisible:NSInsetRect(self.bounds, -revealDistance, 0)];
    return NSDragOperationMove;
}

- (void)draggingExited:(id<NSDraggingInfo>)info {
    orrivane::runAction(_tile.target.exited);
}

- (BOOL)prepareForDragOperation:(id<NSDraggingInfo>)info {
    return self.enabled;
}

- (BOOL)performDragOperation:(id<NSDraggingInfo>)info {
    return orrivane::askAction(_tile.target.performed);
}

#pragma mark Keyboard

- (void)keyDown:(NSEvent*)event {
    NSString* keys = event.charactersIgnoringModifiers;
    const unichar key = keys.length > 0 ? [keys characterAtIndex:0] : 0;
    const bool sideways = key == NSLeftArrowFunctionKey || key == NSRightArrowFunctionKey;
    if (sideways && (event.modifierFlags & heldKeys) == NSEventModifierFlagOption)
        [self stepBy:key == NSLeftArrowFunctionKey ? -1 : 1];
    else if (_isCarried && key == escapeKey)
        [self letGoDropping:NO];
    else
        [super keyDown:event];
}

// The simulated drag holds a key of its own, with which the user's must not come together.
- (void)flagsChanged:(NSEvent*)event {
    if (_isCarried && (event.modifierFlags & heldKeys) == 0)
        [self letGoDropping:YES];
    else
        [super flagsChanged:event];
}

- (BOOL)resignFirstResponder {
    [self letGoDropping:NO];
    return [super resignFirstResponder];
}

- (void)viewWillMoveToWindow:(NSWindow*)window {
    [self letGoDropping:NO];
    [NSNotificationCenter.defaultCenter removeObserver:self
                                                  name:NSWindowDidResignKeyNotification
                                                object:nil];
    [super viewWillMoveToWindow:window];
}

- (void)viewDidMoveToWindow {
    [super viewDidMoveToWindow];
    if (self.window)
        [NSNotificationCenter.defaultCenter addObserver:self
                                               selector:@selector(windowDidResignKey:)
                                                   name:NSWindowDidResignKeyNotification
                                                 object:self.window];
}

// Such a window keeps its first responder, and hears nothing of the keys that are let go.
- (void)windowDidResignKey:(NSNotification*)notification {
    [self letGoDropping:NO];
}

- (void)stepBy:(int)direction {
    if (!self.enabled || dragSource)
        return;
    _isCarried = YES;
    orrivane::runAction(_tile.stepped, direction);
}

- (void)letGoDropping:(BOOL)drops {
    if (!std::exchange(_isCarried, NO))
        return;
    const auto tile = _tile;
    if (drops)
        static_cast<void>(orrivane::askAction(tile.target.performed));
    orrivane::runAction(tile.source.ended);
}

#pragma mark Accessibility

- (BOOL)moveBy:(int)direction {
    [self stepBy:direction];
    const bool moves = _isCarried;
    [self letGoDropping:YES];
    return moves;
}

- (NSArray<NSAccessibilityCustomAction*>*)accessibilityCustomActions {
    __weak ORVTileView* weakSelf = self;
    const auto action = ^(NSString* name, int direction) {
      return [[NSAccessibilityCustomAction alloc] initWithName:name
                                                       handler:^BOOL {
                                                         return [weakSelf moveBy:direction];
                                                       }];
    };
    return self.enabled ? @[ action(@"Move Left", -1), action(@"Move Right", 1) ] : @[];
}

@end
