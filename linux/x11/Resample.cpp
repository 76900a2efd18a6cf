#include <linux/x11/Resample.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace orrivane::x11 {

namespace {

struct Weighted {
    int first;
    int second;
    double share; // of the second
};

// Which two source pixels a canvas pixel's centre lies between.
Weighted between(double position, int count) {
    const double at = std::clamp(position - 0.5, 0.0, static_cast<double>(count - 1));
    const int first = static_cast<int>(at);
    return {first, std::min(first + 1, count - 1), at - first};
}

std::uint32_t blend(const std::array<std::uint32_t, 4>& corners, double x, double y) {
    std::uint32_t result = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        const auto channel = [&](std::size_t i) {
            return static_cast<double>((corners[i] >> shift) & 0xffU);
        };
        const double upper = channel(0) + (channel(1) - channel(0)) * x;
        const double lower = channel(2) + (channel(3) - channel(2)) * x;
        result |= static_cast<std::uint32_t>(std::lround(upper + (lower - upper) * y)) << shift;
    }
    return result;
}

std::uint32_t sample(const PixelImage& icon, double x, double y, bool nearest) {
    if (nearest)
        return icon.at(static_cast<int>(x), static_cast<int>(y));
    const auto across = between(x, icon.pixelWidth());
    const auto down = between(y, icon.pixelHeight());
    return blend({icon.at(across.first, down.first), icon.at(across.second, down.first),
                  icon.at(across.first, down.second), icon.at(across.second, down.second)},
                 across.share, down.share);
}

} // namespace

std::shared_ptr<PixelImage> onCanvas(const PixelImage& icon, int width, int height, double factor,
                                     double top) {
    auto canvas = std::make_shared<PixelImage>(width, height);
    const bool nearest = factor == std::floor(factor);
    for (int y = 0; y < height; ++y) {
        const double sourceY = (y + 0.5 - top) / factor;
        if (sourceY < 0 || sourceY >= icon.pixelHeight())
            continue;
        for (int x = 0; x < width; ++x) {
            const double sourceX = (x + 0.5) / factor;
            if (sourceX < icon.pixelWidth())
                canvas->set(x, y, sample(icon, sourceX, sourceY, nearest));
        }
    }
    return canvas;
}

} // namespace orrivane::x11
