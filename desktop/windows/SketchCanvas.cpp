#include <desktop/windows/SketchCanvas.h>

#include <QMouseEvent>
#include <QPainter>

namespace orrivane::desktop {

SketchCanvas::SketchCanvas(const Theme& theme, QWidget* parent)
    : QWidget(parent)
    , theme_(theme)
    , color_(theme.accent) {
    setCursor(Qt::CrossCursor);
    drawSample();
}

// A bay with hills, a sun and a boat.
void SketchCanvas::drawSample() {
    QPainterPath sun;
    sun.addEllipse(QPointF(390, 96), 40, 40);
    strokes_.push_back({sun, QColor(0xf5b13d), 0, true});
    QPainterPath far(QPointF(0, 236));
    far.cubicTo(70, 150, 120, 140, 190, 206);
    far.cubicTo(250, 140, 320, 130, 410, 214);
    far.cubicTo(470, 180, 540, 176, 640, 236);
    far.lineTo(640, 262);
    far.lineTo(0, 262);
    far.closeSubpath();
    strokes_.push_back({far, QColor(0x7fa3d8), 0, true});
    QPainterPath near(QPointF(0, 262));
    near.cubicTo(90, 196, 190, 214, 270, 250);
    near.cubicTo(380, 214, 520, 220, 640, 262);
    near.closeSubpath();
    strokes_.push_back({near, QColor(0x3f6fb5), 0, true});
    QPainterPath sail(QPointF(196, 232));
    sail.quadTo(214, 262, 232, 300);
    sail.lineTo(196, 300);
    sail.closeSubpath();
    strokes_.push_back({sail, QColor(0xe9604f), 0, true});
    QPainterPath hull(QPointF(168, 306));
    hull.lineTo(246, 306);
    hull.quadTo(236, 326, 220, 326);
    hull.lineTo(188, 326);
    hull.quadTo(174, 324, 168, 306);
    strokes_.push_back({hull, QColor(0x8a4b33), 0, true});
    for (const double y : {342.0, 360.0, 378.0}) {
        QPainterPath wave(QPointF(70 + (y - 342), y));
        for (int crest = 0; crest < 8; ++crest) {
            const QPointF from = wave.currentPosition();
            wave.quadTo(from + QPointF(13, crest % 2 == 0 ? -9 : 9), from + QPointF(26, 0));
        }
        strokes_.push_back({wave, theme_.accent, 3, false});
    }
}

void SketchCanvas::undo() {
    if (strokes_.empty())
        return;
    undone_.push_back(std::move(strokes_.back()));
    strokes_.pop_back();
    update();
}

void SketchCanvas::redo() {
    if (undone_.empty())
        return;
    strokes_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    update();
}

void SketchCanvas::clear() {
    while (!strokes_.empty())
        undo();
}

void SketchCanvas::setGrid(bool shown) {
    grid_ = shown;
    update();
}

void SketchCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme_.windowBackground);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(theme_.scale, theme_.scale);
    painter.setPen(Qt::NoPen);
    if (grid_) {
        painter.setBrush(theme_.menuSeparator);
        for (double y = 16; y * theme_.scale < height(); y += 20)
            for (double x = 16; x * theme_.scale < width(); x += 20)
                painter.drawEllipse(QPointF(x, y), 0.9, 0.9);
    }
    for (const Stroke& stroke : strokes_) {
        if (stroke.filled)
            painter.fillPath(stroke.path, stroke.color);
        else
            painter.strokePath(stroke.path, QPen(stroke.color, stroke.thickness, Qt::SolidLine,
                                                 Qt::RoundCap, Qt::RoundJoin));
    }
}

void SketchCanvas::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    undone_.clear();
    QPainterPath path(event->position() / theme_.scale);
    path.lineTo(event->position() / theme_.scale);
    strokes_.push_back({path, color_, thickness_, false});
    update();
}

void SketchCanvas::mouseMoveEvent(QMouseEvent* event) {
    if (strokes_.empty() || strokes_.back().filled)
        return;
    strokes_.back().path.lineTo(event->position() / theme_.scale);
    update();
}

} // namespace orrivane::desktop
