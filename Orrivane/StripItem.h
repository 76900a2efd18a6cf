#pragma once

#include <Orrivane/view/Image.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace orrivane {

/// One mirrored status item, handed to the tray on every tick.
struct StripItem {
    std::uint32_t id = 0;       ///< window number of the real item; its identity in the row
    std::optional<Image> image; ///< two pixels a point; absent when there is no capture
    double width = 0;           ///< points, the width of the real item's window
    std::string appName;        ///< the tooltip
    std::function<void()> onPress;
    std::function<void()> onSecondaryPress; ///< the right button; empty where there is none
};

} // namespace orrivane
