#pragma once

#include <desktop/support/Theme.h>

#include <QPainterPath>

class QPainter;

namespace orrivane::desktop {

/// Draws one icon in the bar's colours, in points.
class IconPen {
  public:
    static constexpr double height = 22;

    /// The painter's origin is the canvas's top left corner, on a whole pixel; `scale` is pixels
    /// a point.
    IconPen(QPainter& painter, const Theme& theme, double scale, double width, QColor ink,
            QColor paper);

    double width() const { return width_; }
    /// Strength of what is drawn from now on, 0 to 1.
    void setStrength(double strength) { strength_ = strength; }
    /// Another colour than the bar's; an invalid one goes back to it.
    void setColor(QColor color) { color_ = color; }

    void line(const QPainterPath& path, double thickness = 1.5);
    void fill(const QPainterPath& path);
    /// Takes away what was drawn there.
    void erase(const QPainterPath& path);
    void eraseLine(const QPainterPath& path, double thickness);
    void text(const QRectF& place, const QString& text, double size,
              QFont::Weight weight = QFont::Normal, Qt::Alignment alignment = Qt::AlignCenter);
    void eraseText(const QRectF& place, const QString& text, double size, QFont::Weight weight);

    /// The nearest place on a pixel's edge.
    double snapped(double points) const;
    QRectF snapped(const QRectF& area) const;
    /// An outline of whole pixels inside `area`.
    void frame(const QRectF& area, double radius, double thickness);
    /// Edges on pixels.
    void box(const QRectF& area, double radius);

  private:
    QColor ink() const;
    void drawText(const QRectF& place, const QString& text, double size, QFont::Weight weight,
                  Qt::Alignment alignment, QColor color);

    QPainter& painter_;
    const Theme& theme_;
    double scale_;
    double width_;
    QColor ink_;
    QColor paper_;
    QColor color_;
    double strength_ = 1;
};

/// Straight lines through the points.
QPainterPath polyline(std::initializer_list<QPointF> points);
QPainterPath polygon(std::initializer_list<QPointF> points);
QPainterPath disc(QPointF centre, double radius);
/// Part of a circle; degrees, counter-clockwise from three o'clock.
QPainterPath arc(QPointF centre, double radius, double from, double sweep);
QPainterPath roundedBox(const QRectF& area, double radius);

} // namespace orrivane::desktop
