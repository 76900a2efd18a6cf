#include <linux/qt/view/BoxWidget.h>

#include <linux/qt/view/DrawnWidget.h>

#include <QVBoxLayout>

namespace orrivane {

BoxWidget::BoxWidget(QWidget* inner) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(inner);
    setSizePolicy(inner->sizePolicy());
}

void BoxWidget::set(const Insets& padding, const std::optional<Background>& background) {
    const QMargins margins(qRound(padding.leading), qRound(padding.top), qRound(padding.trailing),
                           qRound(padding.bottom));
    if (layout()->contentsMargins() != margins)
        layout()->setContentsMargins(margins);
    if (background_ == background)
        return;
    background_ = background;
    update();
}

void BoxWidget::paintEvent(QPaintEvent*) {
    if (!background_)
        return;
    const Rect whole{{0, 0}, {double(width()), double(height())}};
    paintDrawing(*this, {.size = whole.size,
                         .primitives = {RoundedRectangle{.rect = whole,
                                                         .cornerRadius = background_->cornerRadius,
                                                         .corners = background_->corners,
                                                         .fill = background_->fill,
                                                         .opacity = background_->opacity}}});
}

} // namespace orrivane
