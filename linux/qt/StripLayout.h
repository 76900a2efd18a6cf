#pragma once

#include <Orrivane/support/Geometry.h>
#include <Orrivane/view/View.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orrivane {

/// What a cell stays the same by: its key, or its place in the tree if it has none.
struct CellId {
    std::uint32_t key = 0;
    std::size_t place = 0; ///< 0 if there is a key

    friend bool operator==(const CellId&, const CellId&) = default;
    friend auto operator<=>(const CellId&, const CellId&) = default;
};

/// A button and where it lies.
struct LaidOutButton {
    CellId id;
    const View* view = nullptr;     ///< a part of the laid out root
    const Button* button = nullptr; ///< the node of `view`
    /// Points from the panel's top left, y down. Neighbours share exactly equal edges.
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

/// The buttons of a view, centred as a whole in a panel of `size` points.
std::vector<LaidOutButton> layOut(const View& root, const Size& size);

} // namespace orrivane
