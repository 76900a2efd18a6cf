#pragma once

#include "Desk.h"

#include <linux/support/PixelImage.h>

#include <utility>

namespace orrivane::x11 {

/// Pictures of icons.
class CaptureDesk : public Desk {
  protected:
    using Pixels = std::vector<std::uint32_t>;

    /// What became of one capture.
    struct Shot {
        int answers = 0;
        std::optional<Image> handle;
        [[nodiscard]] const PixelImage* image() const {
            return handle ? static_cast<const PixelImage*>(&handle->body()) : nullptr;
        }
    };

    static constexpr int width = 6;
    static constexpr int height = 4;

    /// No two pixels alike, and garbage in the highest byte.
    static Pixels pattern(std::uint32_t seed = 1) {
        Pixels pixels;
        for (std::uint32_t i = 0; i < width * height; ++i)
            pixels.push_back((seed * 0x13579bU + i * 0x0b0d05U) ^ (i << 27U));
        return pixels;
    }
    static Pixels opaque(Pixels pixels) {
        for (auto& pixel : pixels)
            pixel |= 0xff000000U;
        return pixels;
    }
    std::uint32_t addPainted(const Pixels& pixels, int x = 1400, int y = 3,
                             std::uint8_t depth = 24) {
        const auto icon = addIcon({x, y, width, height}, {.depth = depth});
        app.paint(icon, width, height, pixels);
        return icon;
    }
    std::shared_ptr<Shot> capture(std::uint32_t window, int w, int h) {
        auto shot = std::make_shared<Shot>();
        port().capture.captureImage({window, {}, nullptr}, {w, h, false, CaptureResolution::best},
                                    [shot](std::optional<Image> image) {
                                        ++shot->answers;
                                        shot->handle = std::move(image);
                                    });
        return shot;
    }
    /// The picture, once every program has had the time to draw; null when there is none.
    const PixelImage* take(std::uint32_t window, int w = 2 * width, int h = 56) {
        settle();
        const auto shot = capture(window, w, h);
        EXPECT_EQ(shot->answers, 0); // never inside the call
        loop.advance(1);
        EXPECT_EQ(shot->answers, 1);
        taken_.push_back(shot);
        return shot->image();
    }
    /// The icon again, taken out of a picture that shows it doubled with its top at `top`.
    static Pixels halved(const PixelImage& image, int top) {
        Pixels pixels;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const auto pixel = image.at(2 * x, top + 2 * y);
                for (const auto& [dx, dy] : {std::pair{1, 0}, std::pair{0, 1}, std::pair{1, 1}})
                    EXPECT_EQ(image.at(2 * x + dx, top + 2 * y + dy), pixel);
                pixels.push_back(pixel);
            }
        return pixels;
    }
    xcb_window_t coverWith(XClient& client, const PixelRect& area = {1390, 0, 40, 28}) {
        const auto window =
            client.create({.area = area, .overrideRedirect = true, .background = 0x00ff00});
        client.map(window);
        client.sync();
        return window;
    }

  private:
    std::vector<std::shared_ptr<Shot>> taken_; // keeps the pictures
};

} // namespace orrivane::x11
