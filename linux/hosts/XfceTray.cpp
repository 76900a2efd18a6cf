#include <linux/hosts/XfceTray.h>

#include <algorithm>

namespace orrivane {

XfceTraySettings XfceTray::tightened(const XfceTraySettings& own, int reduction,
                                     const Measures& measures) {
    if (reduction <= 0)
        return own;
    int size = own.iconSize.value_or(defaultIconSize);
    if (size <= 0)
        size = measures.iconWidth > 0 ? measures.iconWidth : defaultIconSize;
    const bool isSquare = own.squareIcons.value_or(false);
    const int pitch = isSquare ? std::max(measures.barHeight, size + gap) : size + gap;
    const int tighter = std::clamp(pitch - reduction - gap, std::min(smallestIcon, size), size);
    auto result = own;
    if (isSquare)
        result.squareIcons = false;
    if (tighter != size)
        result.iconSize = tighter;
    // Smaller icons would else stand in two rows where they stood in one.
    const auto rows = [&](int icon) { return measures.barHeight / (icon + gap); };
    if (rows(size) < 2 && rows(tighter) >= 2)
        result.singleRow = true;
    return result;
}

std::optional<std::vector<std::string>> XfceTray::reordered(std::vector<std::string> known,
                                                            const std::vector<Icon>& icons,
                                                            std::size_t moved, double toX) {
    const auto before = known;
    if (moved >= icons.size() || icons[moved].name.empty())
        return std::nullopt;
    std::vector<Icon> others;
    for (std::size_t i = 0; i < icons.size(); ++i)
        if (i != moved && icons[i].name != icons[moved].name && !icons[i].name.empty())
            others.push_back(icons[i]);
    std::ranges::stable_sort(others, {}, &Icon::middle);
    // Names that are not in the list yet stand leftmost.
    std::vector<std::string> unlisted;
    for (const auto& icon : others)
        if (std::ranges::find(known, icon.name) == known.end() &&
            std::ranges::find(unlisted, icon.name) == unlisted.end())
            unlisted.push_back(icon.name);
    known.insert(known.begin(), unlisted.begin(), unlisted.end());
    std::erase(known, icons[moved].name);

    const auto right =
        std::ranges::find_if(others, [toX](const Icon& icon) { return icon.middle > toX; });
    auto place = known.end();
    if (right != others.end())
        place = std::ranges::find(known, right->name);
    else if (!others.empty())
        place = std::ranges::find(known, others.back().name) + 1;
    known.insert(place, icons[moved].name);
    return known == before ? std::nullopt : std::optional(known);
}

} // namespace orrivane
