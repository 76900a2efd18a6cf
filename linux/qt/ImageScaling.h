#pragma once

#include <linux/support/PixelImage.h>

#include <QImage>
#include <QRectF>
#include <QSize>

namespace orrivane {

/// The part `source` of an image, in its pixels, resized to `target` pixels: every pixel is the
/// mean of what it covers, or interpolated where there is less than one to cover. The same size at
/// whole coordinates is an exact copy.
QImage scaled(const PixelImage& image, const QRectF& source, const QSize& target);

} // namespace orrivane
