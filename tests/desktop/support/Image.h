#pragma once

#include "PixelRect.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace orrivane::e2e {

/// Pixels row by row as 0xAARRGGBB. Those of a window without alpha are opaque; those of a
/// 32-bit window are as the server holds them, premultiplied.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    bool operator==(const Image&) const = default;
    std::uint32_t at(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                         static_cast<std::size_t>(x));
    }
    /// How many colours occur.
    std::size_t colours() const { return std::set(pixels.begin(), pixels.end()).size(); }
    /// The part inside `area`, which is in this image's coordinates and clipped to it.
    Image crop(const PixelRect& area) const;
};

/// Writes `image` as PNG with 8 bits a channel. Throws std::runtime_error on failure.
void writePng(const std::string& path, const Image& image);

} // namespace orrivane::e2e
