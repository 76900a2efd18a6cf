#include <linux/qt/view/PlainButton.h>

#include <linux/qt/view/DrawnWidget.h>
#include <linux/qt/view/FocusRing.h>

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
    if (hasFocus())
        paintFocusRing(*this);
}

} // namespace orrivane
