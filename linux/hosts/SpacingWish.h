#pragma once

#include <Orrivane/SqueezeEngine.h>

#include <linux/support/MenuBarPreferences.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace orrivane {

/// How much less room every item shall take than the tray's own settings give it, in pixels,
/// negative for more room; absent where the user wants the tray's own settings. `scale` is pixels
/// a point.
inline std::optional<int> wantedReduction(const MenuBarPreferences& preferences, double scale) {
    if (!preferences.spacing)
        return std::nullopt;
    constexpr std::int64_t farthest = 10'000; // points
    const auto spacing = std::clamp(*preferences.spacing, -farthest, farthest);
    const auto points = static_cast<double>(SqueezeEngine::systemSpacing - spacing);
    return static_cast<int>(std::lround(std::clamp(points * scale, -1e6, 1e6)));
}

} // namespace orrivane
