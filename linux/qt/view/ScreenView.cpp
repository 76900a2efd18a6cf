#include <linux/qt/view/ScreenView.h>

#include <linux/qt/view/Binding.h>

#include <QScrollArea>
#include <QVBoxLayout>

namespace orrivane {

namespace {

using ActionField = ViewAction View::*;

void collect(const View& view, ActionField which, std::vector<ViewAction>& actions) {
    if ((view.*which).run)
        actions.push_back(view.*which);
    std::visit(
        [&](const auto& node) {
            if constexpr (requires { node.children; })
                for (const auto& child : node.children)
                    collect(child, which, actions);
        },
        view.node);
}

} // namespace

ScreenView::ScreenView()
    : layout_(new QVBoxLayout(this)) {
    layout_->setContentsMargins(0, 0, 0, 0);
}

ScreenView::~ScreenView() = default;

void ScreenView::setRoot(const View& root) {
    root_ = root;
    if (binding_)
        render();
}

void ScreenView::render() {
    if (!binding_ || !binding_->accepts(root_)) {
        binding_ = makeBinding(root_, Axis::vertical);
        layout_->addWidget(binding_->widget());
    }
    binding_->update(root_);
    orderFocus();
}

void ScreenView::showEvent(QShowEvent* event) {
    if (!binding_)
        render();
    QWidget::showEvent(event);
}

void ScreenView::setShown(bool shown) {
    if (std::exchange(shown_, shown) == shown)
        return;
    std::vector<ViewAction> actions;
    collect(root_, shown ? &View::appeared : &View::disappeared, actions);
    for (const auto& action : actions)
        action.run();
}

int ScreenView::naturalHeight() const {
    if (!binding_ || !binding_->widget())
        return 0;
    auto* area = qobject_cast<QScrollArea*>(binding_->widget());
    if (!area)
        area = binding_->widget()->findChild<QScrollArea*>();
    auto* content = area ? area->widget() : binding_->widget();
    const int around = area ? binding_->widget()->height() - area->viewport()->height() : 0;
    auto* layout = content->layout();
    if (!layout)
        return content->sizeHint().height() + around;
    const int height = layout->hasHeightForWidth() ? layout->totalHeightForWidth(content->width())
                                                   : layout->totalSizeHint().height();
    return height + around;
}

void ScreenView::orderFocus() {
    std::vector<QWidget*> order;
    binding_->collectFocus(order);
    if (order == focusOrder_)
        return;
    for (std::size_t i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    focusOrder_ = std::move(order);
}

} // namespace orrivane
