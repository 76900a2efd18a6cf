#pragma once

#include <Orrivane/view/Drawing.h>

#include <QImage>
#include <QPalette>
#include <QRect>

#include <span>

class QPainter;

namespace orrivane {

/// Draws values in device pixels: edges fall on whole pixels and images keep theirs wherever the
/// size allows it.
class DrawingPainter {
  public:
    /// Both live longer than this. The painter's coordinates are device pixels.
    DrawingPainter(QPainter& painter, const QPalette& palette)
        : painter_(&painter)
        , palette_(palette) {}

    /// Stretches the drawing's canvas, less than a pixel off its scale, to exactly `pixels`.
    void draw(const Drawing& drawing, const QRect& pixels);

  private:
    void draw(std::span<const Primitive> primitives);
    void draw(const ClipRectangle& clip);
    void draw(const RoundedRectangle& rectangle);
    void draw(const DrawnImage& image);
    void draw(const Oval& oval);
    void draw(const Path& path);
    void draw(const DrawnText& text);
    void draw(const BarMaterial& material);
    void draw(const Group&) {} // drawn with what belongs to it

    void drawBehindSoftEdges(const QRectF& edges, std::span<const Primitive> primitives);
    void drawGroup(double opacity, std::span<const Primitive> primitives);
    [[nodiscard]] QImage layer(const QRect& area, std::span<const Primitive> primitives);
    [[nodiscard]] QColor color(ColorRole role, double opacity) const;
    [[nodiscard]] QPointF exact(Point point) const;

    [[nodiscard]] QRectF exact(const Rect& rect) const;
    [[nodiscard]] QRect snapped(const Rect& rect) const;

    QPainter* painter_;
    const QPalette& palette_;
    QRect bounds_; // what can be seen of it, in the outermost painter's pixels
    QPointF origin_;
    double scaleX_ = 1; // pixels a point
    double scaleY_ = 1;
};

} // namespace orrivane
