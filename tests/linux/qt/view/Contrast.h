#pragma once

#include <QColor>
#include <QImage>
#include <QPalette>
#include <QRect>

#include <algorithm>
#include <cmath>
#include <map>

namespace orrivane {

inline double luminance(const QColor& color) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// WCAG 2, section "contrast ratio": 1 to 21.
inline double contrast(const QColor& a, const QColor& b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

inline QColor over(const QColor& top, const QColor& bottom) {
    const double alpha = top.alphaF();
    const auto mix = [alpha](double a, double b) { return float(a * alpha + b * (1 - alpha)); };
    return QColor::fromRgbF(mix(top.redF(), bottom.redF()), mix(top.greenF(), bottom.greenF()),
                            mix(top.blueF(), bottom.blueF()));
}

/// What a piece of a picture is painted in, `place` in points of the picture.
struct Inks {
    QColor ground;   ///< the most frequent colour: of what a text covers most is beside its letters
    double contrast; ///< the greatest of any pixel with the ground
};

inline Inks inksIn(const QImage& picture, const QRect& place) {
    const double scale = picture.devicePixelRatioF();
    std::map<QRgb, int> counts;
    const QRect pixels(QPointF(place.topLeft() * scale).toPoint(), place.size() * scale);
    for (int y = pixels.top(); y <= pixels.bottom(); ++y)
        for (int x = pixels.left(); x <= pixels.right(); ++x)
            if (picture.valid(x, y))
                ++counts[picture.pixel(x, y)];
    const auto most =
        std::ranges::max_element(counts, {}, [](const auto& each) { return each.second; });
    if (most == counts.end())
        return {QColor(), 0};
    Inks inks{QColor(most->first), 0};
    for (const auto& [color, count] : counts)
        inks.contrast = std::max(inks.contrast, contrast(QColor(color), inks.ground));
    return inks;
}

inline QPalette darkPalette() {
    QPalette palette(QColor(0x2b2b2e));
    palette.setColor(QPalette::Window, QColor(0x232326));
    palette.setColor(QPalette::WindowText, QColor(0xf2f2f4));
    palette.setColor(QPalette::ButtonText, QColor(0xf2f2f4));
    palette.setColor(QPalette::Text, QColor(0xf2f2f4));
    palette.setColor(QPalette::Highlight, QColor(0x2f7be5));
    return palette;
}

inline QPalette lightPalette() {
    QPalette palette(QColor(0xefefef));
    palette.setColor(QPalette::WindowText, QColor(0x1d1d1f));
    palette.setColor(QPalette::Highlight, QColor(0x2f7be5));
    return palette;
}

} // namespace orrivane
