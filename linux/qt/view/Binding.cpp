#include <linux/qt/view/Binding.h>

#include <linux/qt/view/BoxWidget.h>

#include <QGraphicsOpacityEffect>

namespace orrivane {

namespace {

bool needsBox(const View& view) {
    return view.background || view.padding != Insets();
}

} // namespace

Binding::Binding(const View& first, QWidget* inner)
    : inner_(inner)
    , outer_(inner)
    , kind_(first.node.index())
    , key_(first.key) {
    if (needsBox(first)) {
        box_ = new BoxWidget(inner);
        outer_ = box_;
    }
}

Binding::~Binding() {
    // The widget may be the one whose signal leads here.
    if (outer_) {
        outer_->hide();
        outer_->deleteLater();
    }
}

bool Binding::accepts(const View& next) const {
    return outer_ && inner_ && next.node.index() == kind_ && next.key == key_ &&
           needsBox(next) == !box_.isNull();
}

void Binding::update(const View& next) {
    if (!inner_ || !outer_)
        return;
    fillsWidth_ = next.frame.fillsWidth;
    apply(next);
    applyModifiers(next);
}

void Binding::applyModifiers(const View& next) {
    const auto tooltip = text(next.tooltip);
    if (inner_->toolTip() != tooltip)
        inner_->setToolTip(tooltip);
    const auto name = text(next.accessibilityName.empty() ? ownName() : next.accessibilityName);
    if (inner_->accessibleName() != name)
        inner_->setAccessibleName(name);
    if (next.isEnabled == outer_->testAttribute(Qt::WA_ForceDisabled))
        outer_->setEnabled(next.isEnabled);
    isVisible_ = next.isVisible;
    settleVisibility();
    if (box_)
        box_->set(next.padding, next.background);
    if (frame_ != next.frame)
        applyFrame(next.frame);
    if (opacity_ != next.opacity) {
        opacity_ = next.opacity;
        auto* effect = new QGraphicsOpacityEffect(outer_);
        effect->setOpacity(opacity_);
        outer_->setGraphicsEffect(opacity_ < 1 ? effect : nullptr);
        if (opacity_ >= 1)
            delete effect;
    }
}

// A widget without a parent would be shown as a window.
void Binding::settleVisibility() {
    const bool shows = isVisible_ && takesRoom();
    if (outer_ && !outer_->isWindow() && outer_->isHidden() == shows)
        outer_->setVisible(shows);
    else if (outer_ && !shows)
        outer_->hide();
}

void Binding::applyFrame(const Frame& frame) {
    frame_ = frame;
    const auto fix = [](std::optional<double> points) { return points ? qRound(*points) : -1; };
    const int width = fix(frame.width);
    const int height = fix(frame.height);
    inner_->setMinimumSize(std::max(width, 0), std::max(height, 0));
    inner_->setMaximumSize(width < 0 ? QWIDGETSIZE_MAX : width,
                           height < 0 ? QWIDGETSIZE_MAX : height);
}

void Binding::collectFocus(std::vector<QWidget*>& widgets) const {
    if (inner_ && (inner_->focusPolicy() & Qt::TabFocus) != 0)
        widgets.push_back(inner_);
}

} // namespace orrivane
