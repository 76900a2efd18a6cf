#include <desktop/bar/IconHints.h>

namespace orrivane::desktop {

int declaredWidth(const std::vector<std::uint32_t>& sizeHints) {
    constexpr std::uint32_t hasMinimum = 1U << 4;
    constexpr std::uint32_t hasBase = 1U << 8;
    constexpr std::size_t minimum = 5;
    constexpr std::size_t base = 15;
    // A window of one pixel is what toolkits have before they know better.
    const auto declares = [&](std::uint32_t flag, std::size_t place) {
        return sizeHints.size() > place && (sizeHints[0] & flag) != 0 && sizeHints[place] > 1 &&
               sizeHints[place] <= INT16_MAX;
    };
    if (declares(hasBase, base))
        return static_cast<int>(sizeHints[base]);
    return declares(hasMinimum, minimum) ? static_cast<int>(sizeHints[minimum]) : 0;
}

std::string classOf(std::string_view wmClass) {
    const auto end = wmClass.find('\0');
    if (end == std::string_view::npos)
        return {};
    const auto rest = wmClass.substr(end + 1);
    return std::string(rest.substr(0, rest.find('\0')));
}

} // namespace orrivane::desktop
