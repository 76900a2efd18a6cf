#include <linux/x11/KnownPanels.h>

#include <linux/support/SmallFile.h>

#include <algorithm>
#include <array>
#include <string>

namespace orrivane::x11 {

namespace {

struct Panel {
    int width;
    int height;
    int rows;
};

// Full panel size and the rows beside the housing, both in native pixels. The 15.3" panel's rows
// are its size less 16:10; the others were read from device trees and mode lists.
constexpr std::array<Panel, 4> panels{{
    {3024, 1964, 74},
    {3456, 2234, 74},
    {2560, 1664, 64},
    {2880, 1864, 64},
}};

bool isKnownMake(const std::string& deviceTree) {
    const auto names = readSmallFile(deviceTree + "/compatible").value_or(std::string());
    // The file is a list of names, each ended by a NUL.
    return names.starts_with("apple,") || names.find(std::string("\0apple,", 7)) != names.npos;
}

} // namespace

std::optional<int> KnownPanels::notchRows(int width, int height, const std::string& deviceTree) {
    const auto panel = std::ranges::find_if(
        panels, [&](const Panel& known) { return known.width == width && known.height == height; });
    if (panel == panels.end() || !isKnownMake(deviceTree))
        return std::nullopt;
    return panel->rows;
}

} // namespace orrivane::x11
