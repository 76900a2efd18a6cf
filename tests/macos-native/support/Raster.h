#pragma once

#import <AppKit/AppKit.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orrivane {

/// Pixels from the top left, each red, green, blue and coverage; the colours are multiplied with
/// the coverage.
class Raster {
  public:
    using Pixel = std::array<std::uint8_t, 4>;

    /// `image` drawn by the system at `scale` pixels a point on nothing.
    Raster(NSImage* _Nonnull image, int scale);
    explicit Raster(CGImageRef _Nonnull bitmap);

    [[nodiscard]] std::size_t width() const { return width_; }
    [[nodiscard]] std::size_t height() const { return height_; }
    [[nodiscard]] Pixel at(std::size_t x, std::size_t y) const {
        return pixels_.at(y * width_ + x);
    }
    [[nodiscard]] int coverage(std::size_t x, std::size_t y) const { return at(x, y)[3]; }
    /// Of all pixels together, in whole pixels.
    [[nodiscard]] double totalCoverage() const;

  private:
    CGContextRef _Nullable makeContext();

    std::size_t width_;
    std::size_t height_;
    std::vector<Pixel> pixels_;
};

} // namespace orrivane
