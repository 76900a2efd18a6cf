#pragma once

#include <span>
#include <vector>

namespace orrivane {

/// What a row has to know about a child; lengths in points.
struct RowChild {
    double natural = 0;   ///< the width it takes when nobody asks it to change
    bool fills = false;   ///< takes what the others leave
    bool shrinks = false; ///< makes do with less, such as text that wraps
};

/// The widths of a row's children so that together they fill `available`, as far as they can.
/// Where there is too little, those that shrink share what the others leave: none gives up
/// anything as long as it takes no more than its share.
[[nodiscard]] std::vector<double> rowWidths(std::span<const RowChild> children, double available);

} // namespace orrivane
