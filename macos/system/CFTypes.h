#pragma once

#include <macos/system/CFRef.h>

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Reading loosely typed values. Every function takes any object, or null, and answers with null or
/// an absent value where it is of another type than the one asked for; results are borrowed.
namespace orrivane::cf {

/// Whether `object` is there and of this type. A CFBoolean is no number here.
[[nodiscard]] inline bool isOf(CFTypeID type, CFTypeRef object) {
    return object != nullptr && CFGetTypeID(object) == type;
}

[[nodiscard]] inline CFDictionaryRef dictionary(CFTypeRef object) {
    return isOf(CFDictionaryGetTypeID(), object) ? static_cast<CFDictionaryRef>(object) : nullptr;
}
[[nodiscard]] inline CFArrayRef array(CFTypeRef object) {
    return isOf(CFArrayGetTypeID(), object) ? static_cast<CFArrayRef>(object) : nullptr;
}
[[nodiscard]] inline CFNumberRef number(CFTypeRef object) {
    return isOf(CFNumberGetTypeID(), object) ? static_cast<CFNumberRef>(object) : nullptr;
}
[[nodiscard]] inline CFStringRef string(CFTypeRef object) {
    return isOf(CFStringGetTypeID(), object) ? static_cast<CFStringRef>(object) : nullptr;
}

[[nodiscard]] std::optional<bool> boolean(CFTypeRef object);
/// A number that a signed 64-bit integer holds exactly.
[[nodiscard]] std::optional<std::int64_t> integer(CFTypeRef object);
/// The same for 32 bits without a sign.
[[nodiscard]] std::optional<std::uint32_t> unsignedInteger(CFTypeRef object);
/// A number that is a process identifier: 32 bits, at least 0.
[[nodiscard]] std::optional<std::int32_t> process(CFTypeRef object);
/// UTF-8; absent also where the string is no well-formed Unicode.
[[nodiscard]] std::optional<std::string> text(CFTypeRef object);

/// From UTF-8; empty when `text` is none or the system has no memory.
[[nodiscard]] CFRef<CFStringRef> makeString(std::string_view text);
/// Empty when the system has no memory.
[[nodiscard]] CFRef<CFNumberRef> makeNumber(std::int64_t value);

} // namespace orrivane::cf
