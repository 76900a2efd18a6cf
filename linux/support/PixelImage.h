#pragma once

#include <Orrivane/view/Image.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace orrivane {

/// The bitmap behind an Image on this platform: premultiplied 0xAARRGGBB, row by row without gaps.
class PixelImage : public ImageBody {
  public:
    PixelImage(int width, int height)
        : PixelImage(width, height,
                     std::vector<std::uint32_t>(static_cast<std::size_t>(width) *
                                                static_cast<std::size_t>(height))) {}
    /// `pixels` holds width × height values.
    PixelImage(int width, int height, std::vector<std::uint32_t> pixels)
        : width_(width)
        , height_(height)
        , pixels_(std::move(pixels)) {}

    [[nodiscard]] int pixelWidth() const override { return width_; }
    [[nodiscard]] int pixelHeight() const override { return height_; }
    [[nodiscard]] std::optional<bool> isClear() const override {
        return std::ranges::all_of(pixels_, [](std::uint32_t pixel) { return pixel >> 24 == 0; });
    }
    [[nodiscard]] const std::vector<std::uint32_t>& pixels() const { return pixels_; }
    [[nodiscard]] std::uint32_t at(int x, int y) const { return pixels_[index(x, y)]; }
    void set(int x, int y, std::uint32_t pixel) { pixels_[index(x, y)] = pixel; }

  private:
    [[nodiscard]] std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
};

} // namespace orrivane
