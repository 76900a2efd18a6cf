#pragma once

#include <CoreFoundation/CoreFoundation.h>

using CGFloat = double;
using CGWindowID = std::uint32_t;
using CGEventFlags = std::uint64_t;
using CGEventRef = struct FakeEvent*;
using CGEventSourceRef = struct FakeEventSource*;

struct CGPoint {
    CGFloat x;
    CGFloat y;
};
struct CGSize {
    CGFloat width;
    CGFloat height;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
};

enum CGWindowListOption : std::uint32_t {
    kCGWindowListOptionAll = 0,
    kCGWindowListOptionOnScreenOnly = 1,
    kCGWindowListExcludeDesktopElements = 16,
};
inline constexpr CGWindowID kCGNullWindowID = 0;

enum CGEventSourceStateID : std::int32_t { kCGEventSourceStateHIDSystemState = 1 };
enum CGEventTapLocation : std::uint32_t { kCGHIDEventTap = 0 };
enum CGMouseButton : std::uint32_t { kCGMouseButtonLeft = 0 };
enum CGEventType : std::uint32_t {
    kCGEventLeftMouseDown = 1,
    kCGEventLeftMouseUp = 2,
    kCGEventMouseMoved = 5,
    kCGEventLeftMouseDragged = 6,
};

extern const CFStringRef kCGWindowLayer;
extern const CFStringRef kCGWindowNumber;
extern const CFStringRef kCGWindowBounds;
extern const CFStringRef kCGWindowIsOnscreen;
extern const CFStringRef kCGWindowOwnerPID;
extern const CFStringRef kCGWindowOwnerName;

CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeTo);
bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef representation, CGRect* rect);

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID state);
CGEventRef CGEventCreateMouseEvent(CGEventSourceRef source, CGEventType type, CGPoint position,
                                   CGMouseButton button);
CGEventType CGEventGetType(CGEventRef event);
CGPoint CGEventGetLocation(CGEventRef event);
void CGEventSetLocation(CGEventRef event, CGPoint position);
CGEventFlags CGEventGetFlags(CGEventRef event);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);
void CGEventPost(CGEventTapLocation tap, CGEventRef event);
