#pragma once

#include <optional>
#include <string>

namespace orrivane::x11 {

/// Laptops whose panel is known to have a camera housing. The table tells how many rows lie beside
/// the housing; how wide it is no kernel says, so that is the user's to tell.
struct KnownPanels {
    /// Where the kernel shows the machine's device tree, if it has one.
    static constexpr const char* kernelsFolder = "/proc/device-tree";

    /// Rows of a panel of this size in its native pixels, if the device tree in that folder says
    /// that the machine is of the known make.
    static std::optional<int> notchRows(int width, int height, const std::string& deviceTree);
};

} // namespace orrivane::x11
