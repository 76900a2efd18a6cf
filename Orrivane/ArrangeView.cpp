#include <Orrivane/ArrangeView.h>

#include <algorithm>
#include <cstddef>

namespace orrivane {

namespace {

/// The item is released this far, in points, beside the neighbour it shall stand next to.
constexpr double releaseDistance = 1.0;

} // namespace

int ArrangeView::gap(double x, double tileWidth, int index) {
    return x < tileWidth * 0.5 ? index : index + 1;
}

std::optional<double> ArrangeView::targetX(std::span<const StatusItemWindow> items,
                                           std::uint32_t draggingID, int insertionIndex) {
    const auto dragged = std::ranges::find(items, draggingID, &StatusItemWindow::id);
    if (dragged == items.end() || insertionIndex < 0)
        return std::nullopt;
    const auto from = static_cast<std::size_t>(dragged - items.begin());
    const auto to = static_cast<std::size_t>(insertionIndex);
    if (to == from || to == from + 1)
        return std::nullopt;
    if (to < items.size())
        return items[to].frame.minX() - releaseDistance;
    return items.back().frame.maxX() + releaseDistance;
}

} // namespace orrivane
