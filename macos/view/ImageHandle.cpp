#include <macos/view/ImageHandle.h>

#include <utility>

namespace orrivane {

namespace {

class BitmapBody final : public ImageBody {
  public:
    explicit BitmapBody(CGImageRef bitmap)
        : bitmap_(CGImageRetain(bitmap)) {}
    ~BitmapBody() override { CGImageRelease(bitmap_); }

    [[nodiscard]] int pixelWidth() const override {
        return static_cast<int>(CGImageGetWidth(bitmap_));
    }
    [[nodiscard]] int pixelHeight() const override {
        return static_cast<int>(CGImageGetHeight(bitmap_));
    }
    [[nodiscard]] CGImageRef bitmap() const { return bitmap_; }

  private:
    CGImageRef bitmap_;
};

} // namespace

std::optional<Image> imageFromCGImage(CGImageRef bitmap) {
    if (!bitmap)
        return std::nullopt;
    return Image(std::make_shared<const BitmapBody>(bitmap));
}

CGImageRef bitmapOf(const Image& image) {
    const auto* body = dynamic_cast<const BitmapBody*>(&image.body());
    return body ? body->bitmap() : nullptr;
}

} // namespace orrivane
