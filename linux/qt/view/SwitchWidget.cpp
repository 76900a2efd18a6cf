#include <linux/qt/view/SwitchWidget.h>

#include <QFontMetrics>
#include <QPainter>

namespace orrivane {

namespace {

constexpr int gap = 8;
constexpr int textFlags =
    Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap | Qt::TextHideMnemonic;

} // namespace

SwitchWidget::SwitchWidget() {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAttribute(Qt::WA_Hover);
}

QSize SwitchWidget::track() const {
    const int height = qRound(QFontMetrics(font()).height() * 0.95);
    return {qRound(height * 1.75), height};
}

int SwitchWidget::textLeft() const {
    return track().width() + (text().isEmpty() ? 0 : gap);
}

QSize SwitchWidget::sizeHint() const {
    const QFontMetrics metrics(font());
    return {textLeft() + metrics.size(Qt::TextHideMnemonic, text()).width() + 2,
            std::max(track().height(), metrics.height()) + 4};
}

QSize SwitchWidget::minimumSizeHint() const {
    constexpr int fewWords = 120;
    return {std::min(sizeHint().width(), textLeft() + fewWords), sizeHint().height()};
}

int SwitchWidget::heightForWidth(int width) const {
    const QRect room(0, 0, std::max(1, width - textLeft()), 10000);
    const int needed = QFontMetrics(font()).boundingRect(room, textFlags, text()).height();
    return std::max(needed + 4, sizeHint().height());
}

void SwitchWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(0.45);
    const auto size = track();
    const int line = QFontMetrics(font()).height() + 4;
    const QRectF place(0, (line - size.height()) / 2.0, size.width(), size.height());
    const double radius = place.height() / 2;
    auto off = palette().color(QPalette::WindowText);
    // Three to one with the ground and with the knob, as what shows a state must have.
    off.setAlphaF(underMouse() ? 0.53F : 0.5F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? palette().color(QPalette::Highlight) : off);
    painter.drawRoundedRect(place, radius, radius);
    const double knob = place.height() - 4;
    const double x = isChecked() ? place.right() - 2 - knob : place.left() + 2;
    painter.setBrush(isDown() ? QColor(0xe8e8e8) : QColor(Qt::white));
    painter.drawEllipse(QRectF(x, place.top() + 2, knob, knob));
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75), 5, 5);
    }
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(textLeft(), 0, 0, 0), textFlags, text());
}

} // namespace orrivane
