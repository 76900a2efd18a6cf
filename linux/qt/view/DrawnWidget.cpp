#include <linux/qt/view/DrawnWidget.h>

#include <linux/qt/DrawingPainter.h>

#include <QPainter>

namespace orrivane {

void paintDrawing(QWidget& widget, const Drawing& drawing) {
    const double scale = widget.devicePixelRatioF();
    const QSize pixels = (QSizeF(widget.size()) * scale).toSize();
    if (pixels.isEmpty())
        return;
    // Painted apart, so that a pixel of the drawing is a pixel of the screen.
    QImage picture(pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter inner(&picture);
    DrawingPainter(inner, widget.palette()).draw(drawing, QRect(QPoint(), pixels));
    inner.end();
    picture.setDevicePixelRatio(scale);
    QPainter painter(&widget);
    if (!widget.isEnabled())
        painter.setOpacity(0.4);
    painter.drawImage(QPoint(), picture);
}

void CanvasWidget::set(const Canvas& canvas) {
    if (canvas_ == canvas)
        return;
    const bool resized =
        !canvas_ || canvas_->width != canvas.width || canvas_->height != canvas.height;
    canvas_ = canvas;
    if (resized) {
        const int height = qRound(canvas.height);
        setFixedHeight(height);
        if (canvas.width)
            setFixedWidth(qRound(*canvas.width));
        setSizePolicy(canvas.width ? QSizePolicy::Fixed : QSizePolicy::Expanding,
                      QSizePolicy::Fixed);
        updateGeometry();
    }
    update();
}

QSize CanvasWidget::sizeHint() const {
    constexpr int leastUsefulWidth = 200;
    if (!canvas_)
        return {};
    return {canvas_->width ? qRound(*canvas_->width) : leastUsefulWidth, qRound(canvas_->height)};
}

void CanvasWidget::paintEvent(QPaintEvent*) {
    if (canvas_)
        paintDrawing(*this, canvas_->content.drawing({double(width()), double(height())}));
}

} // namespace orrivane
