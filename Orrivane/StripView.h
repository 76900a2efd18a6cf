#pragma once

#include <Orrivane/StripItem.h>
#include <Orrivane/view/View.h>

#include <vector>

namespace orrivane {

/// The row of mirrored items as a value.
struct StripView {
    std::vector<StripItem> items; ///< left to right
    double barHeight = 0;         ///< points

    /// A row without spacing of plain buttons, each exactly its item's width by the bar's height.
    [[nodiscard]] View body() const;
};

} // namespace orrivane
