#pragma once

#include <Orrivane/platform/Accessibility.h>

#include <optional>
#include <string_view>
#include <utility>
#include <variant>

namespace orrivane {

/// Seconds that an application gets for an answer.
inline constexpr float accessibilityTimeout = 0.3F;

/// An attribute's value; absent when it cannot be read or is of another type than `T`, which must
/// be one that the port's values hold.
template <typename T>
[[nodiscard]] std::optional<T> readAttribute(Accessibility& accessibility,
                                             const AccessibilityElement& element,
                                             std::string_view name) {
    auto value = accessibility.copyAttributeValue(element, name);
    auto* typed = value ? std::get_if<T>(&*value) : nullptr;
    return typed ? std::optional<T>(std::move(*typed)) : std::nullopt;
}

} // namespace orrivane
