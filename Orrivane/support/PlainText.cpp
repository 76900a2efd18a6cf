#include <Orrivane/support/PlainText.h>

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace orrivane {

namespace {

constexpr std::string_view replacement = "\xef\xbf\xbd";

// The second byte of a sequence excludes overlong forms, surrogates and what lies past U+10FFFF.
bool mayFollow(unsigned char first, unsigned char second) {
    switch (first) {
    case 0xe0:
        return second >= 0xa0 && second <= 0xbf;
    case 0xed:
        return second >= 0x80 && second <= 0x9f;
    case 0xf0:
        return second >= 0x90 && second <= 0xbf;
    case 0xf4:
        return second >= 0x80 && second <= 0x8f;
    default:
        return second >= 0x80 && second <= 0xbf;
    }
}

std::size_t expectedLength(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first >= 0xc2 && first <= 0xdf)
        return 2;
    if (first >= 0xe0 && first <= 0xef)
        return 3;
    return first >= 0xf0 && first <= 0xf4 ? 4 : 0;
}

/// Bytes of the well-formed character that `text` begins with; 0 when it begins with none.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const auto length = expectedLength(byte(0));
    if (length == 0 || length > text.size() || (length > 1 && !mayFollow(byte(0), byte(1))))
        return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (byte(i) < 0x80 || byte(i) > 0xbf)
            return 0;
    return length;
}

template <typename Append>
void forEachCharacter(std::string_view text, Append append) {
    while (!text.empty()) {
        const auto length = characterLength(text);
        append(length == 0 ? replacement : text.substr(0, length));
        text.remove_prefix(length == 0 ? 1 : length);
    }
}

} // namespace

std::string decimal(double value) {
    constexpr double largest = 1e15;
    if (!std::isfinite(value))
        return "null";
    if (value == std::trunc(value) && std::abs(value) < largest)
        return std::to_string(static_cast<std::int64_t>(value));
    const double hundredths = std::round(value * 100);
    if (std::abs(hundredths) >= largest)
        return "null";
    const auto length = static_cast<std::int64_t>(std::abs(hundredths));
    const auto whole = (hundredths < 0 ? "-" : "") + std::to_string(length / 100);
    const auto fraction = std::to_string(length % 100);
    return length % 100 == 0 ? whole : whole + (fraction.size() == 1 ? ".0" : ".") + fraction;
}

std::string jsonString(std::string_view text) {
    constexpr std::string_view hex = "0123456789abcdef";
    std::string result = "\"";
    forEachCharacter(text, [&](std::string_view character) {
        const auto first = static_cast<unsigned char>(character.front());
        if (first == '"' || first == '\\') {
            result += '\\';
            result += character;
        } else if (first < 0x20) {
            result += "\\u00";
            result += hex[first >> 4];
            result += hex[first & 15];
        } else {
            result += character;
        }
    });
    return result + "\"";
}

std::string oneLine(std::string_view text) {
    std::string result;
    forEachCharacter(text, [&](std::string_view character) {
        const auto first = static_cast<unsigned char>(character.front());
        const bool isControl = first < 0x20 || first == 0x7f ||
                               (first == 0xc2 && static_cast<unsigned char>(character[1]) < 0xa0);
        const bool endsLine = character == "\xe2\x80\xa8" || character == "\xe2\x80\xa9";
        result += isControl || endsLine ? std::string_view(" ") : character;
    });
    return result;
}

} // namespace orrivane
