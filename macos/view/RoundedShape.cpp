#include <macos/view/RoundedShape.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace orrivane {

namespace {

// How far along an edge a continuous corner begins, in radii. A circular one begins at 1.
constexpr double continuousReach = 1.528665;

// One cubic a corner, through the point where the circle of that radius crosses the diagonal.
struct CornerCurve {
    double reach;  // from the corner to where the edge begins to bend
    double handle; // from the corner to the control point
};

CornerCurve cornerCurve(CGRect rect, double cornerRadius, CornerStyle corners) {
    const double longest = std::min(rect.size.width, rect.size.height) / 2;
    const double radius = std::clamp(cornerRadius, 0.0, longest);
    const double wanted = corners == CornerStyle::continuous ? continuousReach : 1;
    const double reach = std::min(radius * wanted, longest);
    const double diagonal = radius * (1 - std::sqrt(0.5));
    return {reach, std::max(0.0, (8 * diagonal - reach) / 3)};
}

CGPoint along(CGPoint corner, CGVector direction, double distance) {
    return {corner.x + direction.dx * distance, corner.y + direction.dy * distance};
}

} // namespace

void addRoundedRectangle(CGContextRef context, CGRect rect, double cornerRadius,
                         CornerStyle corners) {
    const auto curve = cornerCurve(rect, cornerRadius, corners);
    const double left = CGRectGetMinX(rect);
    const double right = CGRectGetMaxX(rect);
    const double top = CGRectGetMinY(rect);
    const double bottom = CGRectGetMaxY(rect);
    const std::array<CGPoint, 4> points{
        {{left, top}, {right, top}, {right, bottom}, {left, bottom}}};
    const std::array<CGVector, 4> edges{{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto out = edges[i];
        const auto before = edges[(i + 3) % 4];
        const CGVector in{-before.dx, -before.dy};
        const auto start = along(points[i], in, curve.reach);
        if (i == 0)
            CGContextMoveToPoint(context, start.x, start.y);
        else
            CGContextAddLineToPoint(context, start.x, start.y);
        const auto first = along(points[i], in, curve.handle);
        const auto second = along(points[i], out, curve.handle);
        const auto end = along(points[i], out, curve.reach);
        CGContextAddCurveToPoint(context, first.x, first.y, second.x, second.y, end.x, end.y);
    }
    CGContextClosePath(context);
}

} // namespace orrivane
