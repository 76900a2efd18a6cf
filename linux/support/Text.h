#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string_view>
#include <system_error>

namespace orrivane {

/// `text` without the blanks at both its ends.
std::string_view trimmed(std::string_view text, std::string_view blanks = " \t\r");

/// The first line of `text`, without its end; `text` is then what follows it.
std::string_view takeLine(std::string_view& text);

/// The decimal number that `text` is, from its first to its last character; absent when it is none
/// or one too large.
template <std::integral Number>
std::optional<Number> numberIn(std::string_view text) {
    Number number = 0;
    const auto* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace orrivane
