#pragma once

#include <Orrivane/support/Geometry.h>

#include <array>

namespace orrivane {

/// Moves a real status item by playing the gesture a user would make: a sideways drag with Command
/// held. Stateless.
struct MoveEngine {
    /// Where the twelve drag events lie between the press at `start` and the release at
    /// (`toX`, `start.y`). The way is horizontal and eased in and out, so the first step is a short
    /// one and the last one reaches the target. Global points, top-left origin, y down. A target
    /// under the start gives twelve equal points: the gesture is played all the same.
    static std::array<Point, 12> dragPoints(Point start, double toX);
};

} // namespace orrivane
