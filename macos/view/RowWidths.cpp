#include <macos/view/RowWidths.h>

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace orrivane {

namespace {

void shareRest(std::span<const RowChild> children, double rest, std::vector<double>& widths) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < children.size(); ++i)
        if (children[i].shrinks)
            order.push_back(i);
    std::ranges::sort(order, {}, [&](std::size_t i) { return children[i].natural; });
    for (std::size_t i = 0; i < order.size(); ++i) {
        const double share = std::max(0.0, rest) / double(order.size() - i);
        widths[order[i]] = std::min(children[order[i]].natural, share);
        rest -= widths[order[i]];
    }
}

} // namespace

std::vector<double> rowWidths(std::span<const RowChild> children, double available) {
    std::vector<double> widths;
    widths.reserve(children.size());
    for (const auto& child : children)
        widths.push_back(child.natural);
    const double wanted = std::accumulate(widths.begin(), widths.end(), 0.0);
    if (wanted > available) {
        double rest = available;
        for (const auto& child : children)
            rest -= child.shrinks ? 0 : child.natural;
        shareRest(children, rest, widths);
        return widths;
    }
    const auto filling = std::ranges::count_if(children, &RowChild::fills);
    for (std::size_t i = 0; i < children.size(); ++i)
        if (children[i].fills)
            widths[i] += (available - wanted) / double(filling);
    return widths;
}

} // namespace orrivane
