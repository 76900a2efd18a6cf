#include <linux/support/Text.h>

namespace orrivane {

std::string_view trimmed(std::string_view text, std::string_view blanks) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    const auto line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

} // namespace orrivane
