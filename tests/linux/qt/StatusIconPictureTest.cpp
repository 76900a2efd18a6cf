#include "support/Canvas.h"

#include <Orrivane/MenuBarIcon.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace orrivane {
namespace {

struct Limb {
    std::array<Point, 3> points;
    double width;
};

constexpr std::array<Limb, 4> limbs{{{{{{8.4, 5.9}, {5.5, 8.4}, {3.8, 6.4}}}, 1.8},
                                     {{{{10.5, 5.9}, {13.4, 8.4}, {15.1, 6.4}}}, 1.8},
                                     {{{{9.0, 10.0}, {5.9, 12.5}, {6.8, 16.2}}}, 2.2},
                                     {{{{10.3, 10.0}, {14.4, 13.0}, {18.5, 16.2}}}, 2.2}}};

double distanceToLine(Point point, Point from, Point to) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double along = std::clamp(
        ((point.x - from.x) * dx + (point.y - from.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    return std::hypot(point.x - from.x - along * dx, point.y - from.y - along * dy);
}

// The trunk's sides are straight; its top is the cubic, flattened finely.
bool isInTrunk(Point point) {
    std::vector<Point> outline{{11.2, 10.2}, {8.1, 10.2}};
    constexpr int steps = 16;
    for (int i = 0; i <= steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        const double u = 1 - t;
        const std::array<double, 4> weights{u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t};
        outline.push_back(
            {weights[0] * 8.0 + weights[1] * 8.7 + weights[2] * 10.1 + weights[3] * 10.8,
             (weights[0] + weights[3]) * 5.2 + (weights[1] + weights[2]) * 4.8});
    }
    bool inside = false;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Point a = outline[i];
        const Point b = outline[(i + 1) % outline.size()];
        if ((a.y > point.y) != (b.y > point.y) &&
            point.x < a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x))
            inside = !inside;
    }
    return inside;
}

/// Whether the figure covers a point of its canvas, worked out from geometry alone: a stroke with
/// round ends and joins is all that lies within half its width of the line.
bool isCovered(Point point) {
    const auto isInLimb = [point](const Limb& limb) {
        return std::min(distanceToLine(point, limb.points[0], limb.points[1]),
                        distanceToLine(point, limb.points[1], limb.points[2])) < limb.width / 2;
    };
    return std::hypot(point.x - 9.25, point.y - 2.45) < 1.75 || isInTrunk(point) ||
           std::ranges::any_of(limbs, isInLimb);
}

/// The part of a pixel that the figure covers, from 16 points of it.
double coverage(int x, int y, int scale) {
    constexpr int across = 4;
    int covered = 0;
    for (int i = 0; i < across * across; ++i)
        covered += isCovered({(x + (i % across + 0.5) / across) / scale,
                              (y + (i / across + 0.5) / across) / scale})
                       ? 1
                       : 0;
    return static_cast<double>(covered) / (across * across);
}

TEST(StatusIconPicture, isTheFigureAtEveryPixelWithNothingClipped) {
    constexpr int scale = 8;
    // Where two shapes share a pixel, the second one is laid over what the first one left.
    constexpr double tolerance = 0.35;
    const auto image = drawn(MenuBarIcon::image(), {22 * scale, 18 * scale});
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const double expected = coverage(x, y, scale);
            const double found = qAlpha(image.pixel(x, y)) / 255.0;
            ASSERT_NEAR(found, expected, tolerance) << x << ", " << y;
            sum += std::abs(found - expected);
        }
    EXPECT_LT(sum / (image.width() * image.height()), 0.003);
    EXPECT_EQ(opaqueRect(image).bottomRight(), QPoint(156, 138)) << "at 19.6 and 17.3 points";
}

} // namespace
} // namespace orrivane
