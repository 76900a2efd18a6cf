#include <desktop/bar/Wallpaper.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

namespace orrivane::desktop {

namespace {

struct Colours {
    std::array<QRgb, 3> sky; // top, middle, horizon
    QRgb glow;
    std::array<QRgb, 4> hills; // far to near
};

constexpr std::array<Colours, Wallpaper::count> light{{
    {{0x6fa8dc, 0xb9d2ee, 0xfbe3cf}, 0xfff4dc, {0xb7bfdf, 0x8fa3d2, 0x6582bb, 0x3f619c}},
    {{0x7fc4c9, 0xc3e3dc, 0xfdf0cf}, 0xfffbe0, {0xa9d3c4, 0x7dbbab, 0x4f9a8f, 0x2f7673}},
    {{0xd98aa5, 0xf2b9b4, 0xfde5c6}, 0xfff0d2, {0xdea1ac, 0xbe7f9c, 0x93608b, 0x664a77}},
}};

constexpr std::array<Colours, Wallpaper::count> dark{{
    {{0x0c1230, 0x262a5e, 0x7a4a7d}, 0xe59a80, {0x3f3468, 0x2c2854, 0x1d1d40, 0x11132b}},
    {{0x071a24, 0x0f3a45, 0x2f6f6b}, 0x9fd6b4, {0x1f4f53, 0x163d44, 0x0e2b33, 0x081b22}},
    {{0x1c0d22, 0x47193f, 0x96455a}, 0xf2ac86, {0x57284e, 0x3d1d3d, 0x28142c, 0x170c1c}},
}};

void paintSky(QPainter& painter, const QSizeF& size, const Colours& colours) {
    QLinearGradient sky(0, 0, 0, size.height() * 0.78);
    sky.setColorAt(0, QColor(colours.sky[0]));
    sky.setColorAt(0.55, QColor(colours.sky[1]));
    sky.setColorAt(1, QColor(colours.sky[2]));
    painter.fillRect(QRectF({}, size), sky);
    const QPointF sun(size.width() * 0.68, size.height() * 0.56);
    QRadialGradient glow(sun, size.height() * 0.62);
    QColor shine(colours.glow);
    // Eased, or the eye sees where a straight ramp begins and ends.
    constexpr int steps = 16;
    for (int i = 0; i <= steps; ++i) {
        const double away = static_cast<double>(i) / steps;
        shine.setAlphaF(static_cast<float>(std::pow(1 - away, 3)));
        glow.setColorAt(away, shine);
    }
    painter.fillRect(QRectF({}, size), glow);
}

// The line of a range of hills: slow waves, every range with a rhythm of its own.
double heightAt(double across, std::size_t range) {
    const double turn = 2 * std::numbers::pi * across;
    const double shift = 1.7 * static_cast<double>(range);
    return 0.55 * std::sin(turn * 0.9 + shift * 2.1) + 0.3 * std::sin(turn * 1.9 + shift * 3.7) +
           0.15 * std::sin(turn * 3.7 + shift * 5.3);
}

void paintHills(QPainter& painter, const QSizeF& size, std::size_t range, const QColor& colour) {
    const double base = size.height() * (0.6 + 0.115 * static_cast<double>(range));
    const double swing = size.height() * (0.055 + 0.012 * static_cast<double>(range));
    const double step = std::max(2.0, size.width() / 400);
    QPainterPath path;
    path.moveTo(0, size.height());
    for (double x = 0; x < size.width() + step; x += step)
        path.lineTo(x, base - swing * heightAt(x / size.width(), range));
    path.lineTo(size.width() + step, size.height());
    path.closeSubpath();
    QLinearGradient slope(0, base - swing, 0, base + size.height() * 0.3);
    slope.setColorAt(0, colour.lighter(112));
    slope.setColorAt(1, colour.darker(112));
    painter.fillPath(path, slope);
}

} // namespace

Wallpaper::Wallpaper(bool isDark, int number)
    : dark_(isDark)
    , number_(std::clamp(number, 0, count - 1)) {}

QImage Wallpaper::paint(QSize size) const {
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto& colours = (dark_ ? dark : light)[static_cast<std::size_t>(number_)];
    paintSky(painter, size, colours);
    for (std::size_t range = 0; range < colours.hills.size(); ++range)
        paintHills(painter, size, range, QColor(colours.hills[range]));
    return image;
}

} // namespace orrivane::desktop
