#include <desktop/items/IconPen.h>

#include <algorithm>
#include <cmath>

#include <QPainter>

namespace orrivane::desktop {

namespace {

QPen roundPen(const QColor& color, double thickness) {
    return QPen(color, thickness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

} // namespace

IconPen::IconPen(QPainter& painter, const Theme& theme, double scale, double width, QColor ink,
                 QColor paper)
    : painter_(painter)
    , theme_(theme)
    , scale_(scale)
    , width_(width)
    , ink_(ink)
    , paper_(paper) {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.scale(scale, scale);
}

QColor IconPen::ink() const {
    QColor color = color_.isValid() ? color_ : ink_;
    color.setAlphaF(static_cast<float>(strength_));
    return color;
}

void IconPen::line(const QPainterPath& path, double thickness) {
    painter_.strokePath(path, roundPen(ink(), thickness));
}

void IconPen::fill(const QPainterPath& path) {
    painter_.fillPath(path, ink());
}

void IconPen::erase(const QPainterPath& path) {
    painter_.fillPath(path, paper_);
}

void IconPen::eraseLine(const QPainterPath& path, double thickness) {
    painter_.strokePath(path, roundPen(paper_, thickness));
}

void IconPen::text(const QRectF& place, const QString& text, double size, QFont::Weight weight,
                   Qt::Alignment alignment) {
    drawText(place, text, size, weight, alignment, ink());
}

void IconPen::eraseText(const QRectF& place, const QString& text, double size,
                        QFont::Weight weight) {
    drawText(place, text, size, weight, Qt::AlignCenter, paper_);
}

void IconPen::drawText(const QRectF& place, const QString& text, double size, QFont::Weight weight,
                       Qt::Alignment alignment, QColor color) {
    painter_.save();
    // Letters are set at their size in pixels: a scaled painter would blur them.
    const QRectF device = painter_.transform().mapRect(place);
    painter_.resetTransform();
    Theme sized = theme_;
    sized.scale = scale_;
    const QFont font = sized.font(size, weight);
    painter_.setFont(font);
    painter_.setPen(color);
    const QFontMetricsF metrics(font);
    const QRectF ink = metrics.tightBoundingRect(QStringLiteral("0"));
    const double advance = metrics.horizontalAdvance(text);
    double x = device.left();
    if (alignment & Qt::AlignRight)
        x = device.right() - advance;
    else if (alignment & Qt::AlignHCenter)
        x = device.center().x() - advance / 2;
    // The digits' own middle stands in the middle, whatever room the font leaves around them.
    const double baseline = device.center().y() + ink.height() / 2;
    painter_.drawText(QPointF(std::round(x), std::round(baseline)), text);
    painter_.restore();
}

double IconPen::snapped(double points) const {
    return std::round(points * scale_) / scale_;
}

QRectF IconPen::snapped(const QRectF& area) const {
    return QRectF(QPointF(snapped(area.left()), snapped(area.top())),
                  QPointF(snapped(area.right()), snapped(area.bottom())));
}

void IconPen::frame(const QRectF& area, double radius, double thickness) {
    const double whole = std::max(1.0, std::round(thickness * scale_)) / scale_;
    const double inset = whole / 2;
    painter_.strokePath(roundedBox(snapped(area).adjusted(inset, inset, -inset, -inset), radius),
                        roundPen(ink(), whole));
}

void IconPen::box(const QRectF& area, double radius) {
    fill(roundedBox(snapped(area), radius));
}

QPainterPath polyline(std::initializer_list<QPointF> points) {
    QPainterPath path;
    for (const QPointF& point : points) {
        if (path.elementCount() == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    return path;
}

QPainterPath polygon(std::initializer_list<QPointF> points) {
    QPainterPath path = polyline(points);
    path.closeSubpath();
    return path;
}

QPainterPath disc(QPointF centre, double radius) {
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return path;
}

QPainterPath arc(QPointF centre, double radius, double from, double sweep) {
    const QRectF bounds(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    QPainterPath path;
    path.arcMoveTo(bounds, from);
    path.arcTo(bounds, from, sweep);
    return path;
}

QPainterPath roundedBox(const QRectF& area, double radius) {
    QPainterPath path;
    path.addRoundedRect(area, radius, radius);
    return path;
}

} // namespace orrivane::desktop
