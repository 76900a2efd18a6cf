#pragma once

#include <linux/x11/Connection.h>

#include <cstdint>
#include <optional>

namespace orrivane::x11 {

/// The colour in which the tray asks icons to be painted, 0xRRGGBB; absent when there is no tray or
/// it does not say (tray icon protocol, _NET_SYSTEM_TRAY_COLORS).
std::optional<std::uint32_t> trayInk(Connection& connection);

/// Whether the tray moves its items by a drag with Command held and takes its spacing from the
/// menu bar's preferences: such a tray publishes the spacing it has as _ORRIVANE_ITEM_METRICS.
bool trayIsAMenuBar(Connection& connection);

} // namespace orrivane::x11
