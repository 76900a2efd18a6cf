#include <linux/qt/DrawingPainter.h>

#include <Orrivane/view/RoundedOutline.h>

#include <linux/qt/ImageScaling.h>
#include <linux/qt/RoleColors.h>

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace orrivane {

namespace {

QPainterPath pathOf(std::span<const PathElement> elements, auto&& place) {
    QPainterPath path;
    for (const auto& element : elements) {
        if (const auto* move = std::get_if<MoveTo>(&element))
            path.moveTo(place(move->to));
        else if (const auto* line = std::get_if<LineTo>(&element))
            path.lineTo(place(line->to));
        else if (const auto* curve = std::get_if<CurveTo>(&element))
            path.cubicTo(place(curve->control1), place(curve->control2), place(curve->to));
        else
            path.closeSubpath();
    }
    return path;
}

// `rect` and `radius` in pixels.
QPainterPath roundedPath(const QRectF& rect, double radius, CornerStyle corners) {
    return pathOf(
        roundedOutline(Rect{{rect.x(), rect.y()}, {rect.width(), rect.height()}}, radius, corners),
        [](Point point) { return QPointF(point.x, point.y); });
}

// A whole number of source pixels a target pixel needs no interpolation, if it begins on one.
double sourceOrigin(double available, double taken, double step) {
    const double centered = (available - taken) / 2;
    return std::abs(step - std::round(step)) < 1e-9 ? std::floor(centered) : centered;
}

struct Placement {
    QRectF source; // image pixels
    QRect target;  // device pixels
};

Placement placement(const QSizeF& size, const QRect& target, ContentMode mode) {
    if (mode == ContentMode::stretch)
        return {QRectF(QPointF(), size), target};
    const double x = target.width() / size.width();
    const double y = target.height() / size.height();
    if (mode == ContentMode::fill) {
        const double step = 1 / std::max(x, y);
        const QSizeF taken(target.width() * step, target.height() * step);
        const QPointF origin(sourceOrigin(size.width(), taken.width(), step),
                             sourceOrigin(size.height(), taken.height(), step));
        return {QRectF(origin, taken), target};
    }
    const QSize fitted = (size * std::min(x, y)).toSize().expandedTo(QSize(1, 1));
    const QPoint offset((target.width() - fitted.width()) / 2,
                        (target.height() - fitted.height()) / 2);
    return {QRectF(QPointF(), size), QRect(target.topLeft() + offset, fitted)};
}

} // namespace

void DrawingPainter::draw(const Drawing& drawing, const QRect& pixels) {
    if (pixels.isEmpty() || drawing.size.width <= 0 || drawing.size.height <= 0)
        return;
    origin_ = pixels.topLeft();
    scaleX_ = pixels.width() / drawing.size.width;
    scaleY_ = pixels.height() / drawing.size.height;
    bounds_ = painter_->viewport();
    painter_->save();
    draw(drawing.primitives);
    painter_->restore();
}

void DrawingPainter::draw(std::span<const Primitive> primitives) {
    for (std::size_t i = 0; i < primitives.size(); ++i) {
        const auto* clip = std::get_if<ClipRectangle>(&primitives[i]);
        if (clip && clip->antialiased)
            return drawBehindSoftEdges(exact(clip->rect), primitives.subspan(i + 1));
        if (const auto* group = std::get_if<Group>(&primitives[i])) {
            const auto count = std::min(group->count, primitives.size() - i - 1);
            drawGroup(group->opacity, primitives.subspan(i + 1, count));
            i += count;
            continue;
        }
        std::visit([this](const auto& each) { draw(each); }, primitives[i]);
    }
}

QImage DrawingPainter::layer(const QRect& area, std::span<const Primitive> primitives) {
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter inner(&image);
    inner.translate(-area.topLeft());
    auto* outer = std::exchange(painter_, &inner);
    const auto outerBounds = std::exchange(bounds_, area);
    draw(primitives);
    painter_ = outer;
    bounds_ = outerBounds;
    return image;
}

// The toolkit clips whole pixels only.
void DrawingPainter::drawBehindSoftEdges(const QRectF& edges,
                                         std::span<const Primitive> primitives) {
    const auto area = edges.toAlignedRect() & bounds_;
    if (area.isEmpty())
        return;
    auto picture = layer(area, primitives);
    QImage mask(area.size(), QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    QPainter shape(&mask);
    shape.setRenderHint(QPainter::Antialiasing);
    shape.translate(-area.topLeft());
    shape.fillRect(edges, Qt::black);
    shape.end();
    QPainter inner(&picture);
    inner.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    inner.drawImage(QPoint(), mask);
    inner.end();
    painter_->drawImage(area.topLeft(), picture);
}

void DrawingPainter::drawGroup(double opacity, std::span<const Primitive> primitives) {
    const auto area = bounds_;
    if (area.isEmpty() || opacity <= 0)
        return;
    const auto picture = layer(area, primitives);
    painter_->setOpacity(std::min(opacity, 1.0));
    painter_->drawImage(area.topLeft(), picture);
    painter_->setOpacity(1);
}

void DrawingPainter::draw(const ClipRectangle& clip) {
    painter_->setClipRect(snapped(clip.rect), Qt::IntersectClip);
}

QColor DrawingPainter::color(ColorRole role, double opacity) const {
    auto color = roleColor(role, palette_);
    color.setAlphaF(color.alphaF() * static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
    return color;
}

void DrawingPainter::draw(const RoundedRectangle& rectangle) {
    const QRectF outside = snapped(rectangle.rect);
    const double scale = std::min(scaleX_, scaleY_);
    const double radius = rectangle.cornerRadius * scale;
    auto path = roundedPath(outside, radius, rectangle.corners);
    if (rectangle.borderWidth > 0) {
        const double width = std::max(1.0, std::round(rectangle.borderWidth * scale));
        const auto inside = outside.adjusted(width, width, -width, -width);
        if (inside.isValid())
            path.addPath(roundedPath(inside, radius - width, rectangle.corners));
        path.setFillRule(Qt::OddEvenFill);
    }
    painter_->setRenderHint(QPainter::Antialiasing);
    painter_->fillPath(path, color(rectangle.fill, rectangle.opacity));
}

void DrawingPainter::draw(const BarMaterial& material) {
    draw(RoundedRectangle{.rect = material.rect,
                          .cornerRadius = material.cornerRadius,
                          .corners = material.corners,
                          .fill = ColorRole::primary,
                          .opacity = barMaterialOpacity});
}

void DrawingPainter::draw(const Oval& oval) {
    QPainterPath path;
    path.addEllipse(exact(oval.rect));
    painter_->setRenderHint(QPainter::Antialiasing);
    painter_->fillPath(path, color(oval.fill, oval.opacity));
}

void DrawingPainter::draw(const Path& path) {
    const auto shape = pathOf(path.elements, [this](Point point) { return exact(point); });
    painter_->setRenderHint(QPainter::Antialiasing);
    const auto fill = color(path.color, path.opacity);
    if (path.strokeWidth > 0)
        painter_->strokePath(shape, QPen(fill, path.strokeWidth * std::min(scaleX_, scaleY_),
                                         Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    else
        painter_->fillPath(shape, fill);
}

void DrawingPainter::draw(const DrawnText& text) {
    const auto place = exact(text.rect);
    const auto line = QString::fromStdString(text.text);
    auto font = QGuiApplication::font();
    if (text.weight == FontWeight::medium)
        font.setWeight(QFont::Medium);
    font.setPixelSize(std::max(1, qRound(text.size * scaleY_)));
    const double width = QFontMetricsF(font).horizontalAdvance(line);
    if (width > place.width() && width > 0) {
        const double factor = std::max(text.minimumScale, place.width() / width);
        font.setPixelSize(std::max(1, static_cast<int>(text.size * scaleY_ * factor)));
    }
    painter_->setFont(font);
    painter_->setPen(color(text.color, 1));
    painter_->drawText(place, Qt::AlignCenter | Qt::TextSingleLine,
                       QFontMetricsF(font).elidedText(line, Qt::ElideRight, place.width() + 0.5));
}

void DrawingPainter::draw(const DrawnImage& image) {
    const auto* pixels = dynamic_cast<const PixelImage*>(&image.image.body());
    const auto target = snapped(image.rect);
    if (!pixels || target.isEmpty() || pixels->pixelWidth() <= 0 || pixels->pixelHeight() <= 0)
        return;
    const auto placed =
        placement(QSizeF(pixels->pixelWidth(), pixels->pixelHeight()), target, image.mode);
    painter_->drawImage(placed.target.topLeft(),
                        scaled(*pixels, placed.source, placed.target.size()));
}

QPointF DrawingPainter::exact(Point point) const {
    return origin_ + QPointF(point.x * scaleX_, point.y * scaleY_);
}

QRectF DrawingPainter::exact(const Rect& rect) const {
    return {origin_ + QPointF(rect.minX() * scaleX_, rect.minY() * scaleY_),
            origin_ + QPointF(rect.maxX() * scaleX_, rect.maxY() * scaleY_)};
}

QRect DrawingPainter::snapped(const Rect& rect) const {
    const auto edges = exact(rect);
    const QPoint topLeft(qRound(edges.left()), qRound(edges.top()));
    const QPoint bottomRight(qRound(edges.right()), qRound(edges.bottom()));
    return {topLeft, QSize(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y())};
}

} // namespace orrivane
