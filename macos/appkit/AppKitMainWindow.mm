#import <macos/appkit/AppKitMainWindow.h>

#import <macos/appkit/Conversions.h>
#import <macos/view/ScreenView.h>

@implementation ORVMainWindow
@end

/// Keeps the content at its minimum size or above: the window's own limit counts for nothing once
/// anything in it is laid out by constraints.
@interface ORVMainWindowDelegate : NSObject <NSWindowDelegate>
@end

@implementation ORVMainWindowDelegate

- (NSSize)windowWillResize:(NSWindow*)window toSize:(NSSize)size {
    const NSRect content = {NSZeroPoint, window.contentMinSize};
    const NSSize least = [window frameRectForContentRect:content].size;
    return NSMakeSize(MAX(size.width, least.width), MAX(size.height, least.height));
}

@end

namespace orrivane {

AppKitMainWindow::~AppKitMainWindow() {
    [window_ close];
}

void AppKitMainWindow::create(const MainWindowConfiguration& configuration) {
    const NSRect content = {NSZeroPoint, toNSSize(configuration.contentSize)};
    const auto style = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                       NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable;
    window_ = [[ORVMainWindow alloc] initWithContentRect:content
                                               styleMask:style
                                                 backing:NSBackingStoreBuffered
                                                   defer:NO];
    window_.releasedWhenClosed = NO; // closing only hides it
    window_.restorable = NO;
    // Fitted to its content, it would lie small on a black screen; and the program has no icon in
    // the Dock, so where the window is opened is where it is wanted.
    window_.collectionBehavior = NSWindowCollectionBehaviorFullScreenNone |
                                 NSWindowCollectionBehaviorFullScreenDisallowsTiling |
                                 NSWindowCollectionBehaviorMoveToActiveSpace;
    window_.tabbingMode = NSWindowTabbingModeDisallowed;
    window_.title = toNSString(configuration.title);
    window_.contentMinSize = toNSSize(configuration.minimumContentSize);
    delegate_ = [[ORVMainWindowDelegate alloc] init];
    window_.delegate = delegate_;
    screen_ = [[ORVScreenView alloc] initInWindow:YES];
    screen_.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    // Inside a view of its own, so that nothing in it asks the window for a size.
    auto* place = [[NSView alloc] initWithFrame:content];
    screen_.frame = place.bounds;
    [place addSubview:screen_];
    window_.contentView = place;
}

void AppKitMainWindow::setRoot(const View& root) {
    [screen_ setRoot:root];
}

bool AppKitMainWindow::isVisible() {
    return window_.visible;
}

void AppKitMainWindow::makeKeyAndOrderFront() {
    if (window_.miniaturized)
        [window_ deminiaturize:nil];
    [window_ makeKeyAndOrderFront:nil];
    // The program may not become active, however it asks; then the window would stay behind others.
    [window_ orderFrontRegardless];
    [screen_ setShown:YES];
}

void AppKitMainWindow::setFrameTopLeft(Point topLeft) {
    [window_ setFrameTopLeftPoint:NSMakePoint(topLeft.x, topLeft.y)];
}

void AppKitMainWindow::center() {
    [window_ center];
}

Rect AppKitMainWindow::frame() {
    return toRect(window_.frame);
}

Rect AppKitMainWindow::contentRect(const Rect& frame) {
    return toRect([window_ contentRectForFrameRect:toNSRect(frame)]);
}

Rect AppKitMainWindow::frameRect(const Rect& content) {
    return toRect([window_ frameRectForContentRect:toNSRect(content)]);
}

void AppKitMainWindow::setFrame(const Rect& frame) {
    [window_ setFrame:toNSRect(frame) display:YES animate:YES];
}

std::optional<Rect> AppKitMainWindow::visibleFrameOfScreen() {
    NSScreen* screen = window_.screen != nil ? window_.screen : NSScreen.mainScreen;
    return screen != nil ? std::optional(toRect(screen.visibleFrame)) : std::nullopt;
}

double AppKitMainWindow::naturalContentHeight() {
    return [screen_ naturalHeightForWidth:screen_.bounds.size.width];
}

} // namespace orrivane
