#include <linux/qt/view/ChildList.h>

#include <Orrivane/view/MatchedChildren.h>

#include <QBoxLayout>

#include <algorithm>

namespace orrivane {

namespace {

Qt::Alignment across(Axis axis, Alignment alignment) {
    switch (alignment) {
    case Alignment::leading:
        return axis == Axis::vertical ? Qt::AlignLeft : Qt::AlignVCenter;
    case Alignment::trailing:
        return axis == Axis::vertical ? Qt::AlignRight : Qt::AlignVCenter;
    case Alignment::top:
        return axis == Axis::horizontal ? Qt::AlignTop : Qt::AlignHCenter;
    case Alignment::bottom:
        return axis == Axis::horizontal ? Qt::AlignBottom : Qt::AlignHCenter;
    case Alignment::center:
        break;
    }
    return axis == Axis::horizontal ? Qt::AlignVCenter : Qt::AlignHCenter;
}

} // namespace

ChildList::ChildList(QBoxLayout& layout, Axis axis, Alignment alignment)
    : layout_(layout)
    , axis_(axis)
    , alignment_(alignment) {}

void ChildList::update(const std::vector<View>& next) {
    children_ = matchedChildren(std::move(children_), next,
                                [this](const View& view) { return makeBinding(view, axis_); });
    std::vector<QWidget*> order;
    for (std::size_t i = 0; i < next.size(); ++i) {
        children_[i]->update(next[i]);
        order.push_back(children_[i]->widget());
    }
    if (order == order_)
        return;
    order_ = std::move(order);
    fillLayout();
}

void ChildList::fillLayout() {
    while (auto* item = layout_.takeAt(0))
        delete item;
    for (const auto& child : children_) {
        auto* widget = child->widget();
        if (!widget)
            continue;
        const bool fills = axis_ == Axis::vertical && child->fillsWidth();
        layout_.addWidget(widget, 0, fills ? Qt::Alignment() : across(axis_, alignment_));
        child->settleVisibility();
        // Assistive programs read siblings in the order in which they lie above each other.
        widget->raise();
    }
    // What is left of a row stays empty instead of stretching its children.
    if (axis_ == Axis::horizontal && !fillsWidth())
        layout_.addStretch();
}

bool ChildList::fillsWidth() const {
    return std::ranges::any_of(children_, [](const auto& child) { return child->fillsWidth(); });
}

void ChildList::collectFocus(std::vector<QWidget*>& widgets) const {
    for (const auto& child : children_)
        child->collectFocus(widgets);
}

} // namespace orrivane
