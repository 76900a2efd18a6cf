#include <desktop/windows/Toast.h>

#include <QPainter>

namespace orrivane::desktop {

Toast::Toast(const Theme& theme, QWidget* parent)
    : QWidget(parent)
    , theme_(theme) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFont(theme.font(12.5, QFont::DemiBold));
    end_.setSingleShot(true);
    end_.setInterval(4000);
    connect(&end_, &QTimer::timeout, this, &QWidget::hide);
    hide();
}

void Toast::say(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    const int wide = fontMetrics().horizontalAdvance(text) + theme_.pixels(32);
    const int high = theme_.pixels(32);
    setGeometry((parentWidget()->width() - wide) / 2,
                parentWidget()->height() - high - theme_.pixels(18), wide, high);
    show();
    raise();
    update();
    end_.start();
}

void Toast::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme_.dark ? QColor(0xf1f2f6) : QColor(0x24262d));
    painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
    painter.setPen(theme_.dark ? QColor(0x1c1e24) : QColor(0xffffff));
    painter.drawText(rect(), Qt::AlignCenter, text_);
}

} // namespace orrivane::desktop
