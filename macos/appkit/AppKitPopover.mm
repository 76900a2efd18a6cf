#import <macos/appkit/AppKitPopover.h>

#import <macos/appkit/AppKitStatusBar.h>
#import <macos/appkit/Conversions.h>
#import <macos/appkit/PopoverController.h>
#import <macos/view/ScreenView.h>

#include <algorithm>

namespace orrivane {

namespace {

constexpr CGFloat besideContent = 24; // points: the arrow, and some air

// What does not fit below its item would be shown elsewhere, away from it.
NSSize fitting(NSSize size, NSScreen* screen) {
    const CGFloat room = screen.visibleFrame.size.height - besideContent;
    return room > 0 ? NSMakeSize(size.width, std::min(size.height, room)) : size;
}

} // namespace

AppKitPopover::AppKitPopover()
    : popover_([[NSPopover alloc] init])
    , controller_([[ORVPopoverController alloc] initWithPopover:popover_]) {
    popover_.behavior = NSPopoverBehaviorTransient;
    popover_.delegate = controller_;
}

AppKitPopover::~AppKitPopover() {
    [popover_ close];
}

void AppKitPopover::setRoot(const View& root) {
    [controller_.screenView setRoot:root];
    // It makes the popover as large as the view, so it is done once, and the size comes after it.
    if (popover_.contentViewController == nil)
        popover_.contentViewController = controller_;
}

void AppKitPopover::setContentSize(Size size) {
    size_ = toNSSize(size);
    takeSize(size_);
}

void AppKitPopover::takeSize(NSSize size) {
    controller_.preferredContentSize = size;
    [controller_.screenView setFrameSize:size];
    popover_.contentSize = size;
}

bool AppKitPopover::isShown() {
    return popover_.shown;
}

void AppKitPopover::show(StatusItem& below) {
    const auto* item = dynamic_cast<AppKitStatusItem*>(&below);
    auto* button = item != nullptr ? item->button() : nil;
    // Without a window or a content the popover would raise an exception.
    if (button.window == nil || popover_.contentViewController == nil)
        return;
    if ([controller_ takeClosingClick])
        return;
    takeSize(fitting(size_, button.window.screen));
    [popover_ showRelativeToRect:button.bounds ofView:button preferredEdge:NSRectEdgeMinY];
    NSWindow* window = controller_.view.window;
    window.allowsToolTipsWhenApplicationIsInactive = YES; // showing it activates nothing
    [window makeKeyWindow];
    // The window itself would not close by any key: it has no button for that.
    if (window.firstResponder == window)
        [window makeFirstResponder:controller_.screenView];
}

void AppKitPopover::performClose() {
    [popover_ performClose:nil];
}

} // namespace orrivane
