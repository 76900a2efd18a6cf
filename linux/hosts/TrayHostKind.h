#pragma once

#include <linux/hosts/HostProcess.h>

#include <optional>

namespace orrivane {

/// Trays of other programs that can be respaced, or reordered, by means of their own.
enum class TrayHostKind { none, tint2, xfcePanel };

struct TrayHostChoice {
    TrayHostKind kind = TrayHostKind::none;
    int plugin = 0; ///< the tray's number among the panel's plugins, 0 where there are none

    friend bool operator==(const TrayHostChoice&, const TrayHostChoice&) = default;
};

/// Which tray it is whose selection `owner` holds; absent when that is not known.
TrayHostChoice trayHostOf(const std::optional<HostProcess>& owner);

} // namespace orrivane
