#include <macos/system/AXValues.h>

#include <macos/system/AXElement.h>
#include <macos/system/CFTypes.h>
#include <macos/system/CGGeometry.h>

namespace orrivane {

namespace {

std::optional<AccessibilityElement> elementOf(CFTypeRef value) {
    if (!cf::isOf(AXUIElementGetTypeID(), value))
        return std::nullopt;
    return AXElement::handle(CFRef<AXUIElementRef>::retaining(static_cast<AXUIElementRef>(value)));
}

AccessibilityElementList elementsOf(CFArrayRef array) {
    AccessibilityElementList elements;
    const CFIndex count = CFArrayGetCount(array);
    elements.reserve(static_cast<std::size_t>(count));
    for (CFIndex i = 0; i < count; ++i)
        elements.push_back(elementOf(CFArrayGetValueAtIndex(array, i)));
    return elements;
}

template <typename T>
AttributeValue orOther(std::optional<T> value) {
    if (!value)
        return OtherAttributeValue{};
    return *std::move(value);
}

/// `T` must be the structure that `type` stands for: that many bytes are written.
template <typename T>
std::optional<T> unpacked(AXValueRef value, AXValueType type) {
    T result = {};
    if (AXValueGetValue(value, type, &result) == 0)
        return std::nullopt;
    return result;
}

AttributeValue geometryOf(AXValueRef value) {
    switch (AXValueGetType(value)) {
    case kAXValueTypeCGRect:
        if (const auto rect = unpacked<CGRect>(value, kAXValueTypeCGRect))
            return orOther(rectFrom(*rect));
        break;
    case kAXValueTypeCGPoint:
        if (const auto point = unpacked<CGPoint>(value, kAXValueTypeCGPoint))
            return orOther(pointFrom(*point));
        break;
    case kAXValueTypeCGSize:
        if (const auto size = unpacked<CGSize>(value, kAXValueTypeCGSize))
            return orOther(sizeFrom(*size));
        break;
    default:
        break;
    }
    return OtherAttributeValue{};
}

} // namespace

AttributeValue attributeValueOf(CFTypeRef value) {
    if (auto element = elementOf(value))
        return *std::move(element);
    if (cf::isOf(AXValueGetTypeID(), value))
        return geometryOf(static_cast<AXValueRef>(value));
    if (const auto array = cf::array(value))
        return elementsOf(array);
    return orOther(cf::text(value));
}

} // namespace orrivane
