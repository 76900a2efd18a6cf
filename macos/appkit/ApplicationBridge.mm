#import <macos/appkit/ApplicationBridge.h>

#import <macos/appkit/MainThread.h>

#include <utility>

@implementation ORVApplicationDelegate {
    orrivane::ApplicationDelegate* _delegate;
    std::function<void()> _willEnd;
    BOOL _isLaunched;
    BOOL _reopensOnceLaunched;
}

- (instancetype)initWithDelegate:(orrivane::ApplicationDelegate*)delegate
                         willEnd:(std::function<void()>)willEnd {
    self = [super init];
    if (self != nil) {
        _delegate = delegate;
        _willEnd = std::move(willEnd);
    }
    return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)__unused notification {
    orrivane::callOut([&] { _delegate->applicationDidFinishLaunching(); });
    _isLaunched = YES;
    if (std::exchange(_reopensOnceLaunched, NO))
        [self reopenWithVisibleWindows:NO];
}

- (BOOL)reopenWithVisibleWindows:(BOOL)hasVisibleWindows {
    if (!_isLaunched) {
        _reopensOnceLaunched = YES;
        return YES;
    }
    bool goOn = true;
    orrivane::callOut([&] { goOn = _delegate->applicationShouldHandleReopen(hasVisibleWindows); });
    return goOn;
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)__unused application
                    hasVisibleWindows:(BOOL)hasVisibleWindows {
    return [self reopenWithVisibleWindows:hasVisibleWindows];
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)__unused application {
    return NO;
}

- (void)applicationWillTerminate:(NSNotification*)__unused notification {
    orrivane::callOut(_willEnd);
}

// Nothing is restored, but without an answer the system complains at every launch.
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)__unused application {
    return YES;
}

@end
