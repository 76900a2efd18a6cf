#include <linux/hosts/Tint2Config.h>

#include <linux/support/Text.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace orrivane {

namespace {

constexpr std::string_view key = "systray_padding";

std::string_view withoutBlanks(std::string_view text) {
    return trimmed(text, " \t\r\f\v");
}

template <typename Accepts>
std::optional<std::string_view> lastLine(std::string_view text, const Accepts& accepts) {
    std::optional<std::string_view> found;
    while (!text.empty()) {
        auto line = takeLine(text);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (accepts(line))
            found = line;
    }
    return found;
}

bool setsPadding(std::string_view line) {
    const auto sign = line.find('=');
    return !line.starts_with('#') && sign != std::string_view::npos &&
           withoutBlanks(line.substr(0, sign)) == key;
}

// tint2 cuts at single blanks, so two of them in a row leave an empty word.
std::array<std::string_view, 3> wordsOf(std::string_view line) {
    auto value = withoutBlanks(line.substr(line.find('=') + 1));
    std::array<std::string_view, 3> words;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto end = i + 1 < words.size() ? value.find(' ') : std::string_view::npos;
        words[i] = withoutBlanks(value.substr(0, end));
        value.remove_prefix(end == std::string_view::npos ? value.size() : end + 1);
    }
    return words;
}

std::size_t offset(std::string_view text, std::string_view line) {
    return static_cast<std::size_t>(line.data() - text.data());
}

// As tint2 reads it, with whatever follows the digits.
int pixelsIn(std::string_view word) {
    constexpr long most = 10'000; // pixels; more than any panel has room for
    return static_cast<int>(
        std::clamp(std::strtol(std::string(word).c_str(), nullptr, 10), -most, most));
}

} // namespace

std::optional<std::string_view> Tint2Config::paddingLine(std::string_view text) {
    return lastLine(text, setsPadding);
}

int Tint2Config::gap(std::string_view paddingLine) {
    const auto words = wordsOf(paddingLine);
    return pixelsIn(words[2].empty() ? words[0] : words[2]);
}

std::string Tint2Config::withGap(std::string_view paddingLine, int gap) {
    const auto words = wordsOf(paddingLine);
    auto value = paddingLine.find('=') + 1;
    while (value < paddingLine.size() && (paddingLine[value] == ' ' || paddingLine[value] == '\t'))
        ++value;
    return std::string(paddingLine.substr(0, value)) + std::to_string(pixelsIn(words[0])) + " " +
           std::to_string(pixelsIn(words[1])) + " " + std::to_string(gap);
}

std::string Tint2Config::replaced(std::string_view text, std::string_view line,
                                  std::string_view with) {
    const auto begin = offset(text, line);
    return std::string(text.substr(0, begin)) + std::string(with) +
           std::string(text.substr(begin + line.size()));
}

std::optional<std::string_view> Tint2Config::find(std::string_view text, std::string_view line) {
    return lastLine(text, [line](std::string_view each) { return each == line; });
}

std::string Tint2Config::separator(std::string_view text) {
    if (text.empty() || text.ends_with('\n'))
        return {};
    const auto end = text.find('\n');
    return end != std::string_view::npos && end > 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

std::string Tint2Config::appended(std::string_view text, std::string_view line) {
    const auto between = separator(text);
    if (!between.empty())
        return std::string(text) + between + std::string(line);
    return std::string(text) + std::string(line) + (text.ends_with("\r\n") ? "\r\n" : "\n");
}

std::string Tint2Config::removed(std::string_view text, std::string_view line,
                                 std::string_view separator) {
    auto begin = offset(text, line);
    auto end = begin + line.size();
    if (const auto lineEnd = text.find('\n', end); lineEnd != std::string_view::npos)
        end = lineEnd + 1;
    else if (text.substr(0, begin).ends_with(separator))
        begin -= separator.size();
    return std::string(text.substr(0, begin)) + std::string(text.substr(end));
}

} // namespace orrivane
