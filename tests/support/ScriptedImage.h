#pragma once

#include <Orrivane/view/Image.h>

#include <memory>

namespace orrivane {

/// A picture that has a size and nothing on it.
class ScriptedImage : public ImageBody {
  public:
    ScriptedImage(int width, int height)
        : width_(width)
        , height_(height) {}

    [[nodiscard]] int pixelWidth() const override { return width_; }
    [[nodiscard]] int pixelHeight() const override { return height_; }

    static Image make(int width, int height) {
        return Image(std::make_shared<ScriptedImage>(width, height));
    }

  private:
    int width_;
    int height_;
};

} // namespace orrivane
