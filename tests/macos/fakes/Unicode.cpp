#include <tests/macos/fakes/Unicode.h>

namespace orrivane::fakes {

namespace {

constexpr char32_t highSurrogates = 0xd800;
constexpr char32_t lowSurrogates = 0xdc00;
constexpr char32_t afterSurrogates = 0xe000;
constexpr char32_t firstPair = 0x10000;
constexpr char32_t afterLast = 0x110000;

struct Lead {
    std::size_t followers;
    char32_t bits;
    char32_t smallest;
};

std::optional<Lead> leadOf(unsigned char byte) {
    if (byte < 0x80)
        return Lead{0, byte, 0};
    if (byte >= 0xc0 && byte < 0xe0)
        return Lead{1, byte & 0x1fU, 0x80};
    if (byte >= 0xe0 && byte < 0xf0)
        return Lead{2, byte & 0x0fU, 0x800};
    if (byte >= 0xf0 && byte < 0xf8)
        return Lead{3, byte & 0x07U, firstPair};
    return std::nullopt;
}

void append(char32_t point, std::u16string& units) {
    if (point < firstPair) {
        units.push_back(static_cast<char16_t>(point));
        return;
    }
    units.push_back(static_cast<char16_t>(highSurrogates + ((point - firstPair) >> 10)));
    units.push_back(static_cast<char16_t>(lowSurrogates + ((point - firstPair) & 0x3ffU)));
}

std::string encoded(char32_t point) {
    const auto follower = [&](unsigned shift) {
        return static_cast<char>(0x80U | ((point >> shift) & 0x3fU));
    };
    if (point < 0x80)
        return {static_cast<char>(point)};
    if (point < 0x800)
        return {static_cast<char>(0xc0U | (point >> 6)), follower(0)};
    if (point < firstPair)
        return {static_cast<char>(0xe0U | (point >> 12)), follower(6), follower(0)};
    return {static_cast<char>(0xf0U | (point >> 18)), follower(12), follower(6), follower(0)};
}

} // namespace

std::optional<std::u16string> fromUtf8(const std::string& bytes) {
    std::u16string units;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto lead = leadOf(static_cast<unsigned char>(bytes[i]));
        if (!lead || bytes.size() - i <= lead->followers)
            return std::nullopt;
        char32_t point = lead->bits;
        for (std::size_t k = 1; k <= lead->followers; ++k) {
            const auto byte = static_cast<unsigned char>(bytes[i + k]);
            if ((byte & 0xc0U) != 0x80U)
                return std::nullopt;
            point = (point << 6) | (byte & 0x3fU);
        }
        if (point < lead->smallest || point >= afterLast ||
            (point >= highSurrogates && point < afterSurrogates))
            return std::nullopt;
        append(point, units);
        i += lead->followers + 1;
    }
    return units;
}

std::size_t toUtf8(const std::u16string& units, std::size_t capacity, std::string& bytes) {
    std::size_t i = 0;
    while (i < units.size()) {
        char32_t point = units[i];
        std::size_t length = 1;
        if (point >= highSurrogates && point < afterSurrogates) {
            const bool isPair = point < lowSurrogates && i + 1 < units.size() &&
                                units[i + 1] >= lowSurrogates && units[i + 1] < afterSurrogates;
            if (!isPair)
                return i;
            point = firstPair + ((point - highSurrogates) << 10) + (units[i + 1] - lowSurrogates);
            length = 2;
        }
        const auto next = encoded(point);
        if (bytes.size() + next.size() > capacity)
            return i;
        bytes += next;
        i += length;
    }
    return i;
}

} // namespace orrivane::fakes
