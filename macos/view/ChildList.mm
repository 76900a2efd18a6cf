#import <macos/view/ChildList.h>

#import <macos/view/TileView.h>

#include <Orrivane/view/MatchedChildren.h>
#include <macos/view/RowWidths.h>

#include <algorithm>
#include <cmath>
#include <ranges>

namespace orrivane {

double alignedOffset(Alignment alignment, Alignment first, Alignment last, double room,
                     double length) {
    if (alignment == first)
        return 0;
    if (alignment == last)
        return room - length;
    return std::floor((room - length) / 2); // on whole points text stays sharp
}

ChildList::ChildList(NSView* parent, Axis axis, Alignment alignment)
    : parent_(parent)
    , axis_(axis)
    , alignment_(alignment) {}

// The system's drag session would go on with a source or a target that is gone.
bool ChildList::isHeldByDrag(const std::vector<View>& next) const {
    if (!ORVTileView.dragIsInProgress || children_.empty())
        return false;
    const bool keyed = std::ranges::any_of(next, [](const View& view) { return view.key != 0; }) ||
                       children_.front()->key() != 0;
    return keyed && !std::ranges::equal(next, children_, {}, &View::key,
                                        [](const auto& child) { return child->key(); });
}

void ChildList::update(const std::vector<View>& next, double spacing, bool enabled) {
    spacing_ = spacing;
    if (isHeldByDrag(next)) {
        for (const auto& child : children_)
            for (const auto& view : next)
                if (child->accepts(view))
                    child->update(view, enabled);
        return;
    }
    children_ = matchedChildren(std::move(children_), next,
                                [this](const View& view) { return makeBinding(view, axis_); });
    for (std::size_t i = 0; i < next.size(); ++i)
        children_[i]->update(next[i], enabled);
    orderSubviews();
}

// Also the order in which assistive technology reads.
void ChildList::orderSubviews() const {
    NSMutableArray<NSView*>* views = [NSMutableArray arrayWithCapacity:children_.size()];
    for (const auto& child : children_)
        [views addObject:child->view()];
    if (![parent_.subviews isEqualToArray:views])
        parent_.subviews = views;
}

std::vector<Binding*> ChildList::laidOut() const {
    std::vector<Binding*> bindings;
    for (const auto& child : children_)
        if (child->takesRoom())
            bindings.push_back(child.get());
    return bindings;
}

bool ChildList::fillsWidth() const {
    return std::ranges::any_of(laidOut(), &Binding::fillsWidth);
}

bool ChildList::fillsHeight() const {
    return std::ranges::any_of(laidOut(), &Binding::fillsHeight);
}

bool ChildList::shrinks() const {
    return std::ranges::any_of(laidOut(), &Binding::shrinks);
}

std::vector<double> ChildList::widths(const std::vector<Binding*>& row, CGFloat width) const {
    std::vector<RowChild> children;
    children.reserve(row.size());
    for (auto* child : row)
        children.push_back(
            {child->measure(unboundedWidth).width, child->fillsWidth(), child->shrinks()});
    const double spacings = spacing_ * std::max(0.0, double(row.size()) - 1);
    if (!isUnbounded(width))
        return rowWidths(children, width - spacings);
    std::vector<double> natural;
    for (const auto& child : children)
        natural.push_back(child.natural);
    return natural;
}

CGSize ChildList::measure(CGFloat width) const {
    const auto shown = laidOut();
    const double spacings = spacing_ * std::max(0.0, double(shown.size()) - 1);
    CGSize size{0, 0};
    if (axis_ == Axis::vertical) {
        for (auto* child : shown) {
            const auto own = child->measure(width);
            size = {std::max(size.width, own.width), size.height + own.height};
        }
        return {size.width, size.height + spacings};
    }
    const auto taken = widths(shown, width);
    for (std::size_t i = 0; i < shown.size(); ++i)
        size = {size.width + taken[i], std::max(size.height, shown[i]->measure(taken[i]).height)};
    return {size.width + spacings, size.height};
}

void ChildList::place(CGSize size) const {
    if (axis_ == Axis::horizontal)
        placeRow(size);
    else
        placeColumn(size);
}

void ChildList::placeRow(CGSize size) const {
    const auto shown = laidOut();
    const auto taken = widths(shown, size.width);
    double left = 0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const double height = shown[i]->measure(taken[i]).height;
        const double top =
            alignedOffset(alignment_, Alignment::top, Alignment::bottom, size.height, height);
        shown[i]->place(CGRectMake(left, top, taken[i], height));
        left += taken[i] + spacing_;
    }
}

void ChildList::placeColumn(CGSize size) const {
    const auto shown = laidOut();
    const auto filling = std::ranges::count_if(shown, &Binding::fillsHeight);
    const double rest = std::max(0.0, size.height - measure(size.width).height);
    double top = 0;
    for (auto* child : shown) {
        auto own = child->measure(size.width);
        own.width = child->fillsWidth() ? size.width : std::min(own.width, size.width);
        if (child->fillsHeight())
            own.height += rest / double(filling);
        const double left = alignedOffset(alignment_, Alignment::leading, Alignment::trailing,
                                          size.width, own.width);
        child->place(CGRectMake(left, top, own.width, own.height));
        top += own.height + spacing_;
    }
}

void ChildList::collectKeyViews(std::vector<NSView*>& views) const {
    for (auto* child : laidOut())
        child->collectKeyViews(views);
}

} // namespace orrivane
