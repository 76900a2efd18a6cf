#pragma once

#include <linux/support/PixelImage.h>

#include <memory>

namespace orrivane::x11 {

/// An icon on a transparent canvas of `width` × `height` pixels, enlarged by `factor` with its top
/// left at (0, `top`) canvas pixels; what lies outside the canvas is cut off. Whole factors repeat
/// pixels, so that halving the canvas again gives back the icon; others blend neighbours.
std::shared_ptr<PixelImage> onCanvas(const PixelImage& icon, int width, int height, double factor,
                                     double top);

} // namespace orrivane::x11
