#pragma once

#include <Orrivane/view/Image.h>

#include <memory>
#include <optional>

namespace orrivane {

/// A picture that has a size, and pixels only if a test says what they are like.
class ScriptedImage : public ImageBody {
  public:
    ScriptedImage(int width, int height, std::optional<bool> isClear = std::nullopt)
        : width_(width)
        , height_(height)
        , isClear_(isClear) {}

    [[nodiscard]] int pixelWidth() const override { return width_; }
    [[nodiscard]] int pixelHeight() const override { return height_; }
    [[nodiscard]] std::optional<bool> isClear() const override { return isClear_; }

    static Image make(int width, int height, std::optional<bool> isClear = std::nullopt) {
        return Image(std::make_shared<ScriptedImage>(width, height, isClear));
    }

  private:
    int width_;
    int height_;
    std::optional<bool> isClear_;
};

} // namespace orrivane
