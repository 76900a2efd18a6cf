#include <linux/qt/view/PlainButton.h>

#include <linux/qt/view/DrawnWidget.h>

#include <QPainter>

namespace orrivane {

void PlainButton::setDrawing(const Drawing& drawing) {
    setFixedSize(qRound(drawing.size.width), qRound(drawing.size.height));
    if (drawing_ == drawing)
        return;
    drawing_ = drawing;
    update();
}

void PlainButton::paintEvent(QPaintEvent*) {
    paintDrawing(*this, drawing_);
    if (!hasFocus())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75), 4, 4);
}

} // namespace orrivane
