#pragma once

#include <Orrivane/view/Drawing.h>

#include <vector>

namespace orrivane {

/// The outline of `rect` with corners of `radius`, both in the same units, clockwise while y points
/// down. A radius is at most half the shorter side; one below 0 counts as 0. `rect` is
/// standardised.
std::vector<PathElement> roundedOutline(const Rect& rect, double radius, CornerStyle corners);

/// How much of the primary colour stands for the bar's material where nothing shows through it.
inline constexpr double barMaterialOpacity = 0.08;

} // namespace orrivane
