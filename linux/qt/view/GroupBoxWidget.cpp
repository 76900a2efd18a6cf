#include <linux/qt/view/GroupBoxWidget.h>

#include <linux/qt/view/DrawnWidget.h>
#include <linux/qt/view/RoleFonts.h>

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace orrivane {

namespace {

constexpr int headingGap = 6;
constexpr int cardPadding = 12;
constexpr double cardRadius = 8;

QFont headingFont() {
    return roleFont(FontRole::headline, FontWeight::regular);
}

} // namespace

GroupBoxWidget::GroupBoxWidget() {
    new QVBoxLayout(this);
    setFlat(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    reserveHeading();
}

void GroupBoxWidget::setHeading(const QString& heading) {
    if (title() != heading)
        setTitle(heading);
    reserveHeading();
}

int GroupBoxWidget::cardTop() const {
    return title().isEmpty() ? 0 : QFontMetrics(headingFont()).height() + headingGap;
}

void GroupBoxWidget::reserveHeading() {
    // The style's own frame must not add to these.
    setContentsMargins(0, 0, 0, 0);
    layout()->setContentsMargins(cardPadding, cardTop() + cardPadding, cardPadding, cardPadding);
}

void GroupBoxWidget::changeEvent(QEvent* event) {
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        reserveHeading();
}

void GroupBoxWidget::paintEvent(QPaintEvent*) {
    const Rect card{{0, double(cardTop())}, {double(width()), double(height() - cardTop())}};
    const RoundedRectangle fill{
        .rect = card, .cornerRadius = cardRadius, .fill = ColorRole::primary, .opacity = 0.045};
    auto border = fill;
    border.opacity = 0.09;
    border.borderWidth = 1;
    paintDrawing(*this,
                 {.size = {double(width()), double(height())}, .primitives = {fill, border}});
    QPainter painter(this);
    painter.setFont(headingFont());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRect(0, 0, width(), cardTop() - headingGap),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, title());
}

} // namespace orrivane
