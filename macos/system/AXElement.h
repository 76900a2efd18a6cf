#pragma once

#include <Orrivane/platform/AccessibilityElement.h>

#include <macos/system/CFRef.h>

#include <ApplicationServices/ApplicationServices.h>

namespace orrivane {

/// What stands behind an element handle on this platform.
struct AXElement : AccessibilityElementBody {
    explicit AXElement(CFRef<AXUIElementRef> object)
        : reference(std::move(object)) {}

    [[nodiscard]] static AccessibilityElement handle(CFRef<AXUIElementRef> object) {
        return AccessibilityElement(std::make_shared<const AXElement>(std::move(object)));
    }
    /// Borrowed from the handle; null where the system could make no element.
    [[nodiscard]] static AXUIElementRef of(const AccessibilityElement& handle) {
        return static_cast<const AXElement&>(handle.body()).reference.get();
    }

    CFRef<AXUIElementRef> reference;
};

} // namespace orrivane
