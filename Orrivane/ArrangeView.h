#pragma once

#include <Orrivane/WindowCensus.h>

#include <cstdint>
#include <optional>
#include <span>

namespace orrivane {

/// The row of tiles in which the user puts the menu bar in another order. Gap i lies just left of
/// tile i; the gap whose number is the count of tiles lies right of the last one.
struct ArrangeView {
    /// The gap that a pointer over tile `index` means: the one before the tile in its left half,
    /// the one after it from the middle on. `x` is the pointer's distance from the tile's left edge
    /// and `tileWidth` the tile's width, both in points.
    static int gap(double x, double tileWidth, int index);

    /// Where in the menu bar the item `draggingID` has to be released so that it lands in gap
    /// `insertionIndex`: one point left of the item then to its right, or one point right of the
    /// last item (any number beyond the last gap counts as the last). Global points, measured from
    /// the frames of `items`, which stand in menu-bar order. Absent, and the drop fails, when the
    /// item is not in `items`, when it already stands there, or for a negative gap.
    static std::optional<double> targetX(std::span<const StatusItemWindow> items,
                                         std::uint32_t draggingID, int insertionIndex);
};

} // namespace orrivane
