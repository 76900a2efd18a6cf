#include <macos/system/AXAccessibility.h>

#include <macos/system/AXElement.h>
#include <macos/system/AXValues.h>
#include <macos/system/CFTypes.h>

#include <utility>

namespace orrivane {

AXAccessibility::AXAccessibility(Applications applications)
    : applications_(std::move(applications)) {
    boundEveryCall();
}

// A timeout holds for one handle alone, not for its children nor for another handle of the same
// application. What it is set to on the system-wide element is the default of all the others, which
// is several seconds otherwise.
void AXAccessibility::boundEveryCall() {
    if (isEveryCallBounded_)
        return;
    const auto everything = CFRef<AXUIElementRef>::adopting(AXUIElementCreateSystemWide());
    isEveryCallBounded_ = everything && AXUIElementSetMessagingTimeout(
                                            everything.get(), messagingTimeout) == kAXErrorSuccess;
}

std::vector<RunningApplication> AXAccessibility::runningApplications() {
    return applications_.running();
}

std::optional<RunningApplication> AXAccessibility::menuBarOwningApplication() {
    return applications_.menuBarOwning();
}

std::optional<RunningApplication> AXAccessibility::frontmostApplication() {
    return applications_.frontmost();
}

AccessibilityElement AXAccessibility::applicationElement(std::int32_t processIdentifier) {
    boundEveryCall();
    return AXElement::handle(
        CFRef<AXUIElementRef>::adopting(AXUIElementCreateApplication(processIdentifier)));
}

void AXAccessibility::setMessagingTimeout(const AccessibilityElement& handle, float seconds) {
    if (const auto element = AXElement::of(handle))
        AXUIElementSetMessagingTimeout(element, seconds);
}

std::optional<AttributeValue>
AXAccessibility::copyAttributeValue(const AccessibilityElement& handle,
                                    std::string_view attribute) {
    const auto element = AXElement::of(handle);
    const auto name = cf::makeString(attribute);
    if (!element || !name)
        return std::nullopt;
    CFTypeRef copied = nullptr;
    if (AXUIElementCopyAttributeValue(element, name.get(), &copied) != kAXErrorSuccess)
        return std::nullopt;
    // Success without a value happens.
    const auto value = CFRef<CFTypeRef>::adopting(copied);
    if (!value)
        return std::nullopt;
    return attributeValueOf(value.get());
}

int AXAccessibility::performAction(const AccessibilityElement& handle, std::string_view action) {
    const auto element = AXElement::of(handle);
    const auto name = cf::makeString(action);
    if (!element || !name)
        return kAXErrorIllegalArgument;
    return AXUIElementPerformAction(element, name.get());
}

bool AXAccessibility::isTrusted() {
    return AXIsProcessTrusted() != 0;
}

} // namespace orrivane
