#pragma once

#include <optional>
#include <string>

namespace orrivane::fakes {

/// Absent where the bytes are no well-formed UTF-8.
std::optional<std::u16string> fromUtf8(const std::string& bytes);
/// Converts until a lone surrogate or until `capacity` bytes are full; how many units it came.
std::size_t toUtf8(const std::u16string& units, std::size_t capacity, std::string& bytes);

} // namespace orrivane::fakes
