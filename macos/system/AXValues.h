#pragma once

#include <Orrivane/platform/AccessibilityElement.h>

#include <CoreFoundation/CoreFoundation.h>

namespace orrivane {

/// An attribute's value by its type; what it holds is retained. `value` must not be null. A string
/// that is no well-formed Unicode and a rectangle, point or size with a number that is not finite
/// are values of a type nobody asks for.
[[nodiscard]] AttributeValue attributeValueOf(CFTypeRef value);

} // namespace orrivane
