#pragma once

#include <Orrivane/view/View.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace orrivane {

/// The renderer's children for `next`, in its order. One of `present` that `accepts` a view serves
/// it again: a view with a key finds its own wherever that is now, one without at its place only.
/// `make` makes the others. What serves nobody is destroyed.
template <class Child, class Make>
std::vector<std::unique_ptr<Child>> matchedChildren(std::vector<std::unique_ptr<Child>> present,
                                                    std::span<const View> next, Make make) {
    const auto take = [&](const View& view, std::size_t place) {
        auto found = present.end();
        if (view.key != 0)
            found = std::ranges::find_if(
                present, [&](const auto& child) { return child && child->accepts(view); });
        else if (place < present.size() && present[place] && present[place]->accepts(view))
            found = present.begin() + static_cast<std::ptrdiff_t>(place);
        return found == present.end() ? make(view) : std::move(*found);
    };
    std::vector<std::unique_ptr<Child>> children;
    children.reserve(next.size());
    for (const auto& view : next)
        children.push_back(take(view, children.size()));
    return children;
}

} // namespace orrivane
