#pragma once

#include <linux/x11/Connection.h>

#include <cstdint>
#include <optional>

namespace orrivane::x11 {

/// The colour in which the tray asks icons to be painted, 0xRRGGBB; absent when there is no tray or
/// it does not say (tray icon protocol, _NET_SYSTEM_TRAY_COLORS).
std::optional<std::uint32_t> trayInk(Connection& connection);

} // namespace orrivane::x11
