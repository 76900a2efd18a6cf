#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orrivane::x11 {

/// Every atom the program uses, in the order of `atomNames`.
enum class Atom : std::size_t {
    activeWindow,
    displayCutout,
    instanceCommand,
    instanceSelection,
    itemMetrics,
    manager,
    supportingWmCheck,
    trayColors,
    traySelection,
    compositorSelection,
    windowPid,
    windowType,
    windowTypeDock,
    windowTypeTooltip,
    workArea,
    xembedInfo,
    count,
};

constexpr std::size_t atomCount = static_cast<std::size_t>(Atom::count);

/// A trailing '#' stands for the number of the X screen.
constexpr std::array<std::string_view, atomCount> atomNames{
    "_NET_ACTIVE_WINDOW",
    "_ORRIVANE_DISPLAY_CUTOUT",
    "_ORRIVANE_COMMAND",
    "_ORRIVANE_S#",
    "_ORRIVANE_ITEM_METRICS",
    "MANAGER",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_SYSTEM_TRAY_COLORS",
    "_NET_SYSTEM_TRAY_S#",
    "_NET_WM_CM_S#",
    "_NET_WM_PID",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WORKAREA",
    "_XEMBED_INFO",
};

} // namespace orrivane::x11
