#include <macos/system/CFTypes.h>

#include <limits>

namespace orrivane::cf {

std::optional<bool> boolean(CFTypeRef object) {
    if (!isOf(CFBooleanGetTypeID(), object))
        return std::nullopt;
    return CFBooleanGetValue(static_cast<CFBooleanRef>(object)) != 0;
}

std::optional<std::int64_t> integer(CFTypeRef object) {
    const auto stored = number(object);
    std::int64_t value = 0;
    if (!stored || CFNumberGetValue(stored, kCFNumberSInt64Type, &value) == 0)
        return std::nullopt;
    return value;
}

std::optional<std::uint32_t> unsignedInteger(CFTypeRef object) {
    const auto value = integer(object);
    if (!value || *value < 0 || *value > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(*value);
}

std::optional<std::int32_t> process(CFTypeRef object) {
    const auto value = unsignedInteger(object);
    if (!value || *value > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return static_cast<std::int32_t>(*value);
}

std::optional<std::string> text(CFTypeRef object) {
    const auto stored = string(object);
    if (!stored)
        return std::nullopt;
    const CFIndex length = CFStringGetLength(stored);
    const CFIndex capacity = CFStringGetMaximumSizeForEncoding(length, kCFStringEncodingUTF8);
    if (capacity < 0)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(capacity), '\0');
    CFIndex used = 0;
    const CFIndex converted =
        CFStringGetBytes(stored, CFRangeMake(0, length), kCFStringEncodingUTF8, 0, false,
                         reinterpret_cast<UInt8*>(bytes.data()), capacity, &used);
    if (converted != length)
        return std::nullopt;
    bytes.resize(static_cast<std::size_t>(used));
    return bytes;
}

CFRef<CFStringRef> makeString(std::string_view text) {
    return CFRef<CFStringRef>::adopting(
        CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(text.data()),
                                static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false));
}

CFRef<CFNumberRef> makeNumber(std::int64_t value) {
    return CFRef<CFNumberRef>::adopting(CFNumberCreate(nullptr, kCFNumberSInt64Type, &value));
}

} // namespace orrivane::cf
