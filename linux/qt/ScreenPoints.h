#pragma once

#include <Orrivane/support/Geometry.h>

#include <QRect>

namespace orrivane {

/// Between the toolkit's coordinates (origin at the first screen's top left, y down) and global
/// points with the origin at its bottom left, y up.
QRect fromPoints(const Rect& rect);
Rect toPoints(const QRect& rect);

} // namespace orrivane
