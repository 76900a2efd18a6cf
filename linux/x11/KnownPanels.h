#pragma once

#include <filesystem>
#include <optional>

namespace orrivane::x11 {

/// Laptops whose panel is known to have a camera housing. The table tells how many rows lie beside
/// the housing; how wide it is no kernel says, so that is the user's to tell.
struct KnownPanels {
    /// Rows of a panel of this size in its native pixels, if the machine's device tree says that it
    /// is of the known make; `deviceTree` is the kernel's folder.
    static std::optional<int>
    notchRows(int width, int height, const std::filesystem::path& deviceTree = "/proc/device-tree");
};

} // namespace orrivane::x11
