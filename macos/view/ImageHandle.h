#pragma once

#include <Orrivane/view/Image.h>

#include <CoreGraphics/CoreGraphics.h>

#include <optional>

namespace orrivane {

/// Wraps a bitmap, retaining it; absent for null. The last copy may be released on any thread.
[[nodiscard]] std::optional<Image> imageFromCGImage(CGImageRef bitmap);

/// The bitmap behind an image, borrowed from it; null for an image made elsewhere.
[[nodiscard]] CGImageRef bitmapOf(const Image& image);

} // namespace orrivane
