#include <tests/macos/fakes/Heap.h>
#include <tests/macos/fakes/Unicode.h>

#include <cmath>
#include <cstring>
#include <limits>

using orrivane::fakes::Heap;
namespace fakes = orrivane::fakes;

namespace {

Heap& heap() {
    return Heap::shared();
}

// As the system does it: what does not fit is told, and the nearest value written all the same.
bool toInteger(const fakes::Number& number, std::int64_t& result) {
    if (const auto* integer = std::get_if<std::int64_t>(&number.value)) {
        result = *integer;
        return true;
    }
    const double real = std::get<double>(number.value);
    constexpr double limit = 0x1p63;
    if (std::isnan(real))
        result = 0;
    else if (real >= limit)
        result = std::numeric_limits<std::int64_t>::max();
    else if (real < -limit)
        result = std::numeric_limits<std::int64_t>::min();
    else
        result = static_cast<std::int64_t>(real);
    return std::isfinite(real) && real >= -limit && real < limit && real == std::trunc(real);
}

} // namespace

CFTypeRef CFRetain(CFTypeRef object) {
    heap().retain(object);
    return object;
}
void CFRelease(CFTypeRef object) {
    heap().release(object);
}
CFTypeID CFGetTypeID(CFTypeRef object) {
    return heap().typeOf(object);
}

CFTypeID CFStringGetTypeID() {
    return Heap::typeId<fakes::Text>();
}
CFTypeID CFNumberGetTypeID() {
    return Heap::typeId<fakes::Number>();
}
CFTypeID CFBooleanGetTypeID() {
    return Heap::typeId<fakes::Truth>();
}
CFTypeID CFArrayGetTypeID() {
    return Heap::typeId<fakes::List>();
}
CFTypeID CFDictionaryGetTypeID() {
    return Heap::typeId<fakes::Table>();
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean) {
    if (encoding != kCFStringEncodingUTF8)
        heap().note("a string of an encoding that is not faked");
    auto units = fakes::fromUtf8(std::string(bytes, bytes + count));
    return units ? heap().make<CFStringRef>(fakes::Text{std::move(*units)}) : nullptr;
}

CFIndex CFStringGetLength(CFStringRef string) {
    const auto* text = heap().find<fakes::Text>(string);
    return text ? static_cast<CFIndex>(text->units.size()) : 0;
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) {
    return 3 * length;
}

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean, UInt8* buffer, CFIndex capacity, CFIndex* used) {
    const auto* text = heap().find<fakes::Text>(string);
    if (!text)
        return 0;
    if (encoding != kCFStringEncodingUTF8 || lossByte != 0 || range.location != 0 ||
        range.length != static_cast<CFIndex>(text->units.size()))
        heap().note("bytes of a string in a way that is not faked");
    std::string bytes;
    const auto converted = fakes::toUtf8(text->units, static_cast<std::size_t>(capacity), bytes);
    std::memcpy(buffer, bytes.data(), bytes.size());
    *used = static_cast<CFIndex>(bytes.size());
    return static_cast<CFIndex>(converted);
}

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
    if (type != kCFNumberSInt64Type)
        heap().note("a number of a type that is not faked");
    std::int64_t integer = 0;
    std::memcpy(&integer, value, sizeof integer);
    return heap().make<CFNumberRef>(fakes::Number{integer});
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    const auto* stored = heap().find<fakes::Number>(number);
    if (type != kCFNumberSInt64Type)
        heap().note("a number read as a type that is not faked");
    if (!stored)
        return false;
    std::int64_t integer = 0;
    const bool isExact = toInteger(*stored, integer);
    std::memcpy(value, &integer, sizeof integer);
    return isExact;
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
    const auto* truth = heap().find<fakes::Truth>(boolean);
    return truth && truth->value;
}

CFIndex CFArrayGetCount(CFArrayRef array) {
    const auto* list = heap().find<fakes::List>(array);
    return list ? static_cast<CFIndex>(list->members.size()) : 0;
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    const auto* list = heap().find<fakes::List>(array);
    if (!list)
        return nullptr;
    if (index < 0 || index >= static_cast<CFIndex>(list->members.size())) {
        heap().note("an index outside its array");
        return nullptr;
    }
    return list->members[static_cast<std::size_t>(index)];
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    const auto* table = heap().find<fakes::Table>(dictionary);
    const auto* name = heap().find<fakes::Text>(key);
    if (!table || !name)
        return nullptr;
    for (const auto& [member, value] : table->members)
        if (member == name->units)
            return value;
    return nullptr;
}
