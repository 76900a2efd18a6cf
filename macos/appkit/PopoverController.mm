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

std::optional<Click> clickOf(NSEvent* event, NSEventType type) {
    if (event == nil || event.type != type)
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

- (void)popoverDidShow:(NSNotification*)__unused notification {
    if (_clickMonitor != nil)
        return;
    __weak ORVPopoverController* weakSelf = self;
    const auto pressed = ^(NSEvent* event) {
      // Items that this program drags in the bar are pressed in other programs too, and a question
      // that is being asked keeps what it was asked in.
      if (!isOwn(event) && NSApp.modalWindow == nil)
          [weakSelf performClose:nil];
    };
    const auto mask = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown;
    _clickMonitor = [NSEvent addGlobalMonitorForEventsMatchingMask:mask handler:pressed];
}

- (void)popoverWillClose:(NSNotification*)__unused notification {
    _closingClick = clickOf(NSApp.currentEvent, NSEventTypeLeftMouseDown);
}

- (void)popoverDidClose:(NSNotification*)__unused notification {
    [self stopListening];
}

- (BOOL)takeClosingClick {
    const auto closing = std::exchange(_closingClick, std::nullopt);
    const auto release = clickOf(NSApp.currentEvent, NSEventTypeLeftMouseUp);
    return closing && release && closing->number == release->number &&
           release->time - closing->time < longestClick;
}

- (void)stopListening {
    if (_clickMonitor != nil)
        [NSEvent removeMonitor:_clickMonitor];
    _clickMonitor = nil;
}

@end
