#include <Orrivane/MenuBarPreview.h>

#include <Orrivane/SqueezeEngine.h>

#include <algorithm>
#include <cstddef>

namespace orrivane {

namespace {

constexpr double pointsPerSpacingStep = 6.0;
constexpr double narrowestIcon = 14.0;

double effectiveWidth(double measured, std::optional<double> shrink) {
    return shrink ? std::max(narrowestIcon, measured - *shrink) : measured;
}

/// What each of `count` icons loses; absent where the measured widths stay, however narrow.
std::optional<double> shrinkPerIcon(std::optional<int> spacing, std::size_t count) {
    if (!spacing || *spacing >= SqueezeEngine::systemSpacing || count == 0)
        return std::nullopt;
    // As a double, because the difference from the lowest integers does not fit an int.
    const double steps =
        static_cast<double>(SqueezeEngine::systemSpacing) - static_cast<double>(*spacing);
    return steps * pointsPerSpacingStep / static_cast<double>(count);
}

bool covers(const NotchInfo& notch, const LaidOutIcon& icon) {
    return icon.x < notch.notchMaxX && notch.notchMinX < icon.x + icon.width;
}

} // namespace

std::vector<LaidOutIcon> MenuBarPreview::layout(const std::optional<NotchInfo>& notch,
                                                std::span<const PreviewIcon> icons,
                                                std::optional<int> simulatedSpacing) {
    const std::optional<double> shrink = shrinkPerIcon(simulatedSpacing, icons.size());
    std::vector<LaidOutIcon> laid;
    laid.reserve(icons.size());
    double total = 0;
    for (const PreviewIcon& icon : icons) {
        const double width = effectiveWidth(icon.width, shrink);
        laid.push_back({.icon = icon, .width = width});
        total += width;
    }

    double right = notch ? notch->screenMinX + notch->screenWidth : total;
    for (auto icon = laid.rbegin(); icon != laid.rend(); ++icon) {
        right -= icon->width;
        icon->x = right;
        icon->eaten = notch && covers(*notch, *icon);
    }
    return laid;
}

int MenuBarPreview::projectedEatenCount(const std::optional<NotchInfo>& notch,
                                        std::span<const PreviewIcon> icons,
                                        std::optional<int> simulatedSpacing) {
    const std::vector<LaidOutIcon> laid = layout(notch, icons, simulatedSpacing);
    return static_cast<int>(std::ranges::count(laid, true, &LaidOutIcon::eaten));
}

} // namespace orrivane
