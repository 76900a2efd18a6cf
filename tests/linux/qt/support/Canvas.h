#pragma once

#include <linux/qt/DrawingPainter.h>

#include <QImage>
#include <QPainter>
#include <QPalette>

namespace orrivane {

inline QImage canvas(const QSize& size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

inline QImage drawn(const Drawing& drawing, const QSize& pixels, const QPalette& palette = {}) {
    auto image = canvas(pixels);
    QPainter painter(&image);
    DrawingPainter(painter, palette).draw(drawing, QRect(QPoint(), pixels));
    return image;
}

/// What encloses everything that is not fully transparent.
inline QRect opaqueRect(const QImage& image) {
    QRect rect;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) != 0)
                rect |= QRect(x, y, 1, 1);
    return rect;
}

inline QPalette palette(QColor window, QColor text) {
    QPalette result;
    result.setColor(QPalette::Window, window);
    result.setColor(QPalette::WindowText, text);
    return result;
}

} // namespace orrivane
