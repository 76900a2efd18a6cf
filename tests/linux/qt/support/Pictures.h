#pragma once

#include <Orrivane/view/Image.h>

#include <linux/support/PixelImage.h>

#include <QImage>

#include <memory>

namespace orrivane {

/// A picture in which no two neighbours are alike; opaque.
inline std::shared_ptr<PixelImage> noisyPicture(int width, int height, unsigned seed = 1) {
    auto image = std::make_shared<PixelImage>(width, height);
    unsigned value = seed;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            value = value * 1664525U + 1013904223U;
            image->set(x, y, 0xff000000U | (value >> 8));
        }
    return image;
}

inline std::shared_ptr<PixelImage> plainPicture(int width, int height, QRgb color) {
    auto image = std::make_shared<PixelImage>(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image->set(x, y, color);
    return image;
}

} // namespace orrivane
