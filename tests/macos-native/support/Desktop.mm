#import "Desktop.h"

#import <macos/appkit/Conversions.h>

#include <unistd.h>

namespace orrivane {

namespace {

NSArray<NSDictionary*>* windowsOf(CGWindowListOption option, CGWindowID number) {
    NSArray* list = CFBridgingRelease(CGWindowListCopyWindowInfo(option, number));
    return list;
}

NSDictionary* windowInfo(std::int64_t number) {
    const auto wanted = static_cast<CGWindowID>(number);
    // Asked for a window that is not there, it may answer with others.
    for (NSDictionary* window in windowsOf(kCGWindowListOptionIncludingWindow, wanted))
        if ([window[(__bridge NSString*)kCGWindowNumber] longLongValue] == number)
            return window;
    return nil;
}

} // namespace

std::optional<std::string> whyNoDesktop() {
    const id session = CFBridgingRelease(CGSessionCopyCurrentDictionary());
    if (session == nil)
        return "nobody is logged in at a screen here";
    uint32_t displays = 0;
    if (CGGetActiveDisplayList(0, nullptr, &displays) != kCGErrorSuccess || displays == 0)
        return "no display is attached here";
    return std::nullopt;
}

NSView* firstView(NSView* root, Class kind) {
    if (root == nil || [root isKindOfClass:kind])
        return root;
    for (NSView* child in root.subviews)
        if (NSView* found = firstView(child, kind))
            return found;
    return nil;
}

NSWindow* shownWindowOf(Class kind) {
    for (NSWindow* window in NSApp.windows)
        if (window.visible &&
            ([window isKindOfClass:kind] || firstView(window.contentView, kind) != nil))
            return window;
    return nil;
}

std::optional<Rect> frameByWindowServer(std::int64_t number) {
    const id bounds = windowInfo(number)[(__bridge NSString*)kCGWindowBounds];
    CGRect rect = {};
    if (bounds == nil ||
        !CGRectMakeWithDictionaryRepresentation((__bridge CFDictionaryRef)bounds, &rect))
        return std::nullopt;
    const CGFloat top = CGDisplayBounds(CGMainDisplayID()).size.height;
    rect.origin.y = top - CGRectGetMaxY(rect);
    return toRect(rect);
}

bool isOnScreen(std::int64_t number) {
    return [windowInfo(number)[(__bridge NSString*)kCGWindowIsOnscreen] boolValue];
}

std::int64_t foreignWindow() {
    for (NSDictionary* window in windowsOf(kCGWindowListOptionOnScreenOnly, kCGNullWindowID))
        if ([window[(__bridge NSString*)kCGWindowOwnerPID] intValue] != getpid())
            return [window[(__bridge NSString*)kCGWindowNumber] longLongValue];
    return 0;
}

} // namespace orrivane
