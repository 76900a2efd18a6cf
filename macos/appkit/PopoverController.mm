#import <macos/appkit/PopoverController.h>

#import <macos/view/ScreenView.h>

#include <unistd.h>

#include <optional>
#include <utility>

namespace {

struct Click {
    NSInteger number; // a press and its release share it
    NSTimeInterval time;
};

constexpr NSTimeInterval longestClick = 2; // seconds

std::optional<Click> clickOf(NSEvent* event) {
    if (event.type != NSEventTypeLeftMouseDown && event.type != NSEventTypeLeftMouseUp)
        return std::nullopt;
    return Click{event.eventNumber, event.timestamp};
}

bool isOwn(NSEvent* event) {
    CGEventRef raw = event.CGEvent;
    return raw != nullptr &&
           CGEventGetIntegerValueField(raw, kCGEventSourceUnixProcessID) == getpid();
}

} // namespace

@implementation ORVPopoverController {
    __weak NSPopover* _popover;
    id _clickMonitor;
    NSEvent* _press; // in another program, while it closes the popover
    std::optional<Click> _closingClick;
}

- (instancetype)initWithPopover:(NSPopover*)popover {
    self = [super initWithNibName:nil bundle:nil];
    if (self != nil) {
        _popover = popover;
        _screenView = [[ORVScreenView alloc] initInWindow:NO];
    }
    return self;
}

- (void)dealloc {
    [self stopListening];
}

// Without it a nib of the class's name would be looked for.
- (void)loadView {
    self.view = _screenView;
}

- (void)viewDidAppear {
    [super viewDidAppear];
    [_screenView setShown:YES];
}

- (void)viewDidDisappear {
    [super viewDidDisappear];
    [_screenView setShown:NO];
}

- (void)cancelOperation:(id)sender {
    [_popover performClose:sender];
}

// What Command-W sends to whatever has the keyboard.
- (void)performClose:(id)sender {
    [_popover performClose:sender];
}

// Before it is shown: presses while it moves into place count as well.
- (void)popoverWillShow:(NSNotification*)__unused notification {
    if (_clickMonitor != nil)
        return;
    __weak ORVPopoverController* weakSelf = self;
    const auto pressed = ^(NSEvent* event) {
      // Items that this program drags in the bar are pressed in other programs too.
      if (!isOwn(event))
          [weakSelf closeForPress:event];
    };
    const auto mask = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown;
    _clickMonitor = [NSEvent addGlobalMonitorForEventsMatchingMask:mask handler:pressed];
}

// Where another program shows the status items, its own is pressed there as well, and acts after
// this.
- (void)closeForPress:(NSEvent*)event {
    if (!_popover.shown) {
        [self stopListening];
        return;
    }
    _press = event;
    [self performClose:nil];
    if (_popover.shown)
        _press = nil; // it has refused
}

// A question that is being asked keeps what it was asked in: a click on it is one outside of here.
- (BOOL)popoverShouldClose:(NSPopover*)__unused popover {
    return NSApp.modalWindow == nil;
}

- (void)popoverWillClose:(NSNotification*)__unused notification {
    NSEvent* elsewhere = std::exchange(_press, nil);
    NSEvent* event = elsewhere != nil ? elsewhere : NSApp.currentEvent;
    const bool isPress = event.type == NSEventTypeLeftMouseDown;
    _closingClick = isPress ? clickOf(event) : std::nullopt;
}

- (void)popoverDidClose:(NSNotification*)__unused notification {
    _press = nil;
    // It comes when the popover has moved away, and may have been opened again meanwhile.
    if (!_popover.shown)
        [self stopListening];
}

- (BOOL)takeClosingClick {
    const auto closing = std::exchange(_closingClick, std::nullopt);
    const auto current = clickOf(NSApp.currentEvent);
    // By the clock: whoever presses the item without a mouse comes upon the last click there was.
    return closing && current && closing->number == current->number &&
           NSProcessInfo.processInfo.systemUptime - closing->time < longestClick;
}

- (void)stopListening {
    if (_clickMonitor != nil)
        [NSEvent removeMonitor:_clickMonitor];
    _clickMonitor = nil;
}

@end
