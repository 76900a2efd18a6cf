#include <linux/qt/ImageScaling.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace orrivane {

namespace {

// Which source pixels of one axis make a target pixel, and how much of each.
struct Taps {
    int first = 0;
    std::vector<double> weights;
};

Taps covering(double from, double to, int count) {
    const int first = std::clamp(static_cast<int>(std::floor(from)), 0, count - 1);
    const int last = std::clamp(static_cast<int>(std::ceil(to)) - 1, first, count - 1);
    Taps taps{first, {}};
    double sum = 0;
    for (int i = first; i <= last; ++i) {
        const double overlap = std::max(0.0, std::min(to, i + 1.0) - std::max(from, double(i)));
        taps.weights.push_back(overlap);
        sum += overlap;
    }
    if (sum <= 0)
        return {first, {1}};
    for (auto& weight : taps.weights)
        weight /= sum;
    return taps;
}

Taps interpolating(double center, int count) {
    const double position = std::clamp(center - 0.5, 0.0, count - 1.0);
    const int first = std::min(static_cast<int>(position), std::max(count - 2, 0));
    const double part = position - first;
    if (count == 1)
        return {0, {1}};
    return {first, {1 - part, part}};
}

std::vector<Taps> axis(double from, double extent, int target, int count) {
    std::vector<Taps> taps;
    taps.reserve(static_cast<std::size_t>(target));
    const double step = extent / target;
    for (int i = 0; i < target; ++i)
        taps.push_back(step < 1 ? interpolating(from + (i + 0.5) * step, count)
                                : covering(from + i * step, from + (i + 1) * step, count));
    return taps;
}

QRgb mean(const PixelImage& image, const Taps& column, const Taps& row) {
    std::array<double, 4> channels{};
    for (std::size_t y = 0; y < row.weights.size(); ++y)
        for (std::size_t x = 0; x < column.weights.size(); ++x) {
            const auto pixel =
                image.at(column.first + static_cast<int>(x), row.first + static_cast<int>(y));
            const double weight = row.weights[y] * column.weights[x];
            for (std::size_t i = 0; i < channels.size(); ++i)
                channels[i] += weight * ((pixel >> (8 * i)) & 0xff);
        }
    QRgb result = 0;
    for (std::size_t i = 0; i < channels.size(); ++i)
        result |= static_cast<QRgb>(std::lround(channels[i])) << (8 * i);
    return result;
}

} // namespace

QImage scaled(const PixelImage& image, const QRectF& source, const QSize& target) {
    if (target.isEmpty() || image.pixelWidth() <= 0 || image.pixelHeight() <= 0)
        return {};
    const auto columns = axis(source.x(), source.width(), target.width(), image.pixelWidth());
    const auto rows = axis(source.y(), source.height(), target.height(), image.pixelHeight());
    QImage result(target, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < target.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < target.width(); ++x)
            line[x] = mean(image, columns[static_cast<std::size_t>(x)],
                           rows[static_cast<std::size_t>(y)]);
    }
    return result;
}

} // namespace orrivane
