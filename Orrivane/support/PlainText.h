#pragma once

#include <string>
#include <string_view>

/// Values as text that machines and people read. Independent of the locale; the result is UTF-8,
/// with a replacement character for every byte of a name that is none.
namespace orrivane {

/// At most two decimals; "null" for what is no number or beyond what a double holds exactly.
[[nodiscard]] std::string decimal(double value);
/// A JSON string with its quotation marks.
[[nodiscard]] std::string jsonString(std::string_view text);
/// Without anything that would end the line or move the cursor.
[[nodiscard]] std::string oneLine(std::string_view text);

} // namespace orrivane
