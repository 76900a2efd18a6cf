#pragma once

#include <QPainter>
#include <QPalette>
#include <QWidget>

namespace orrivane {

/// Drawn last by a widget that has the keyboard, along its edge.
inline void paintFocusRing(QWidget& widget, QPalette::ColorRole color = QPalette::Highlight) {
    constexpr double width = 1.5;
    constexpr double radius = 4;
    QPainter painter(&widget);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(widget.palette().color(color), width));
    const auto edge = QRectF(widget.rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.drawRoundedRect(edge, radius, radius);
}

/// One of the toolkit's controls. Not every style lets the one with the keyboard be made out. As
/// with the styles, there is nothing to see before the keyboard is used in the window.
template <typename Control>
class WithFocusRing : public Control {
  public:
    using Control::Control;

  protected:
    void paintEvent(QPaintEvent* event) override {
        Control::paintEvent(event);
        if (this->hasFocus() && this->window()->testAttribute(Qt::WA_KeyboardFocusChange))
            paintFocusRing(*this);
    }
};

} // namespace orrivane
