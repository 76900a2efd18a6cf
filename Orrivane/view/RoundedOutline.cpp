#include <Orrivane/view/RoundedOutline.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace orrivane {

namespace {

// How far along an edge a continuous corner begins, in radii, as macOS draws its own. A circular
// one begins at 1.
constexpr double continuousReach = 1.528665;

struct Direction {
    double x;
    double y;
};

Point along(Point from, Direction direction, double distance) {
    return {from.x + direction.x * distance, from.y + direction.y * distance};
}

} // namespace

std::vector<PathElement> roundedOutline(const Rect& rect, double radius, CornerStyle corners) {
    // One cubic a corner, through the point where the circle of that radius crosses the diagonal;
    // with a reach of one radius it is that circle.
    const double longest = std::min(rect.width(), rect.height()) / 2;
    radius = std::clamp(radius, 0.0, longest);
    const double reach =
        std::min(corners == CornerStyle::continuous ? radius * continuousReach : radius, longest);
    const double diagonal = radius * (1 - std::sqrt(0.5));
    const double handle = std::max(0.0, (8 * diagonal - reach) / 3);

    const std::array<Point, 4> points{{{rect.minX(), rect.minY()},
                                       {rect.maxX(), rect.minY()},
                                       {rect.maxX(), rect.maxY()},
                                       {rect.minX(), rect.maxY()}}};
    const std::array<Direction, 4> edges{{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};
    std::vector<PathElement> outline;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto before = edges[(i + 3) % 4];
        const Direction in{-before.x, -before.y};
        const auto out = edges[i];
        const auto start = along(points[i], in, reach);
        outline.push_back(i == 0 ? PathElement(MoveTo{start}) : PathElement(LineTo{start}));
        outline.push_back(CurveTo{along(points[i], in, handle), along(points[i], out, handle),
                                  along(points[i], out, reach)});
    }
    outline.push_back(ClosePath{});
    return outline;
}

} // namespace orrivane
