#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>

#include <sys/types.h>

using AXUIElementRef = const struct FakeElement*;
using AXValueRef = const struct FakeAccessibilityValue*;

enum AXError : std::int32_t {
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorIllegalArgument = -25201,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorActionUnsupported = -25206,
    kAXErrorAPIDisabled = -25211,
    kAXErrorNoValue = -25212,
};

enum AXValueType : std::uint32_t {
    kAXValueTypeIllegal = 0,
    kAXValueTypeCGPoint = 1,
    kAXValueTypeCGSize = 2,
    kAXValueTypeCGRect = 3,
    kAXValueTypeCFRange = 4,
};

CFTypeID AXUIElementGetTypeID();
CFTypeID AXValueGetTypeID();

AXUIElementRef AXUIElementCreateApplication(pid_t process);
AXUIElementRef AXUIElementCreateSystemWide();
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds);
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef* value);
AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);
AXValueType AXValueGetType(AXValueRef value);
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result);
Boolean AXIsProcessTrusted();
