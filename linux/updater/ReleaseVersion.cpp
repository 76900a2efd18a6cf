#include <linux/updater/ReleaseVersion.h>

#include <algorithm>

namespace orrivane {

namespace {

constexpr std::size_t longestVersion = 64;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}
bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}
bool isSeparator(char character) {
    return character == '.' || character == '-' || character == '~';
}

template <typename Predicate>
std::string_view takeWhile(std::string_view& rest, Predicate predicate) {
    const auto end = std::find_if_not(rest.begin(), rest.end(), predicate);
    const auto taken = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(taken.size());
    return taken;
}

std::string number(std::string_view digits) {
    const auto first = digits.find_first_not_of('0');
    return std::string(first == std::string_view::npos ? "0" : digits.substr(first));
}

std::string lowerCase(std::string_view letters) {
    std::string result(letters);
    for (auto& letter : result)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return result;
}

std::strong_ordering ordering(int comparison) {
    return comparison <=> 0;
}

std::strong_ordering compareParts(const std::string& left, const std::string& right) {
    const bool leftIsNumber = isDigit(left.front());
    if (leftIsNumber != isDigit(right.front()))
        return leftIsNumber ? std::strong_ordering::less : std::strong_ordering::greater;
    if (leftIsNumber && left.size() != right.size())
        return left.size() <=> right.size();
    return ordering(left.compare(right));
}

std::strong_ordering compareLists(const std::vector<std::string>& left,
                                  const std::vector<std::string>& right) {
    const auto common = std::min(left.size(), right.size());
    for (std::size_t index = 0; index < common; ++index)
        if (const auto order = compareParts(left[index], right[index]); order != 0)
            return order;
    return left.size() <=> right.size();
}

} // namespace

std::optional<ReleaseVersion> ReleaseVersion::parse(std::string_view text) {
    if (text.size() > longestVersion)
        return std::nullopt;
    if (text.starts_with('v'))
        text.remove_prefix(1);
    const auto note = text.find('+');
    ReleaseVersion version;
    auto rest = text.substr(0, note);
    if (!version.readNumbers(rest) || !version.readPreRelease(rest))
        return std::nullopt;
    if (note == std::string_view::npos)
        return version;
    const auto noted = text.substr(note + 1);
    const bool plain = !noted.empty() && std::all_of(noted.begin(), noted.end(), [](char each) {
        return isDigit(each) || isLetter(each) || isSeparator(each);
    });
    return plain ? std::optional(version) : std::nullopt;
}

bool ReleaseVersion::readNumbers(std::string_view& rest) {
    while (true) {
        const auto digits = takeWhile(rest, isDigit);
        if (digits.empty())
            return false;
        numbers_.push_back(number(digits));
        if (!rest.starts_with('.'))
            break;
        rest.remove_prefix(1);
    }
    while (!numbers_.empty() && numbers_.back() == "0")
        numbers_.pop_back();
    return true;
}

bool ReleaseVersion::readPreRelease(std::string_view rest) {
    if (rest.starts_with('-') || rest.starts_with('~')) {
        rest.remove_prefix(1);
        if (rest.empty())
            return false;
    }
    while (!rest.empty()) {
        if (isDigit(rest.front()))
            preRelease_.push_back(number(takeWhile(rest, isDigit)));
        else if (isLetter(rest.front()))
            preRelease_.push_back(lowerCase(takeWhile(rest, isLetter)));
        else
            return false;
        if (rest.empty() || !isSeparator(rest.front()))
            continue;
        rest.remove_prefix(1);
        if (rest.empty())
            return false;
    }
    return true;
}

std::strong_ordering operator<=>(const ReleaseVersion& left, const ReleaseVersion& right) {
    // Lists of numbers without zeros at the end: the longer one has something more than zero.
    if (const auto order = compareLists(left.numbers_, right.numbers_); order != 0)
        return order;
    if (left.isPreRelease() != right.isPreRelease())
        return left.isPreRelease() ? std::strong_ordering::less : std::strong_ordering::greater;
    return compareLists(left.preRelease_, right.preRelease_);
}

} // namespace orrivane
