#include <desktop/windows/WindowTitle.h>

#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

namespace orrivane::desktop {

WindowTitle::WindowTitle(const Theme& theme, QWidget* window)
    : QWidget(window)
    , theme_(theme) {
    setMouseTracking(true);
    setFont(theme.font(13.5, QFont::Bold));
}

QRectF WindowTitle::place(Button button) const {
    const double unit = theme_.scale;
    const double left = button == Button::close ? 14 : 36;
    return {left * unit, (points - 16) / 2 * unit, 16 * unit, 16 * unit};
}

WindowTitle::Button WindowTitle::buttonAt(QPointF point) const {
    for (const Button button : {Button::close, Button::enlarge})
        if (place(button).contains(point))
            return button;
    return Button::none;
}

void WindowTitle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintButton(painter, Button::close);
    paintButton(painter, Button::enlarge);
    painter.setPen(theme_.text);
    const int left = theme_.pixels(titleLeft_);
    painter.drawText(QRect(left, 0, width() - left, height()), Qt::AlignVCenter | Qt::AlignLeft,
                     window()->windowTitle());
}

void WindowTitle::paintButton(QPainter& painter, Button button) const {
    const QRectF area = place(button);
    const QPointF middle = area.center();
    const double unit = theme_.scale;
    const bool hot = hovered_ == button;
    QColor face = theme_.dark ? QColor(255, 255, 255, 30) : QColor(0, 0, 0, 22);
    if (hot)
        face = button == Button::close ? QColor(0xe5484d) : theme_.accent;
    painter.setPen(Qt::NoPen);
    painter.setBrush(face);
    painter.drawEllipse(area);
    painter.setPen(
        QPen(hot ? QColor(0xffffff) : theme_.faintText, 1.4 * unit, Qt::SolidLine, Qt::RoundCap));
    const double arm = 2.7 * unit;
    if (button == Button::close) {
        painter.drawLine(middle + QPointF(-arm, -arm), middle + QPointF(arm, arm));
        painter.drawLine(middle + QPointF(-arm, arm), middle + QPointF(arm, -arm));
    } else {
        painter.drawLine(middle + QPointF(-arm, 0) * 1.2, middle + QPointF(arm, 0) * 1.2);
        painter.drawLine(middle + QPointF(0, -arm) * 1.2, middle + QPointF(0, arm) * 1.2);
    }
}

void WindowTitle::setHovered(Button button) {
    if (hovered_ == button)
        return;
    hovered_ = button;
    update();
}

void WindowTitle::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    pressed_ = buttonAt(event->position());
    if (pressed_ == Button::none)
        grip_ = event->position();
}

void WindowTitle::mouseReleaseEvent(QMouseEvent* event) {
    const Button pressed = pressed_;
    pressed_ = Button::none;
    grip_.reset();
    if (event->button() != Qt::LeftButton || buttonAt(event->position()) != pressed)
        return;
    if (pressed == Button::close)
        window()->close();
    else if (pressed == Button::enlarge)
        toggleSize();
}

void WindowTitle::mouseMoveEvent(QMouseEvent* event) {
    // Not at the press: a window manager that hears of it after the release would move on and on.
    if (grip_ && (event->position() - *grip_).manhattanLength() > 3 * theme_.scale) {
        grip_.reset();
        window()->windowHandle()->startSystemMove();
        return;
    }
    setHovered(buttonAt(event->position()));
}

void WindowTitle::mouseDoubleClickEvent(QMouseEvent* event) {
    if (buttonAt(event->position()) == Button::none)
        toggleSize();
}

void WindowTitle::leaveEvent(QEvent*) {
    setHovered(Button::none);
}

void WindowTitle::toggleSize() {
    if (window()->isMaximized())
        window()->showNormal();
    else
        window()->showMaximized();
}

} // namespace orrivane::desktop
