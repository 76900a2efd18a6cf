#include <Orrivane/MoveEngine.h>

namespace orrivane {

namespace {

/// Smoothstep: 0 at 0 and exactly 1 at 1, at rest at both ends.
double eased(double t) {
    return t * t * (3.0 - 2.0 * t);
}

} // namespace

std::array<Point, 12> MoveEngine::dragPoints(Point start, double toX) {
    std::array<Point, 12> points;
    const double distance = toX - start.x;
    double step = 0;
    for (Point& point : points) {
        step += 1;
        const double progress = eased(step / static_cast<double>(points.size()));
        point = {start.x + distance * progress, start.y};
    }
    return points;
}

} // namespace orrivane
