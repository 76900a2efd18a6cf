#include <macos/view/ImageHandle.h>

#include <macos/system/CFRef.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace orrivane {

namespace {

// Drawn into a context that keeps the transparency alone, so that the bitmap's own layout of pixels
// does not matter.
std::optional<bool> isClear(CGImageRef bitmap) {
    const auto width = CGImageGetWidth(bitmap);
    const auto height = CGImageGetHeight(bitmap);
    std::vector<std::uint8_t> alpha(width * height);
    const auto context = CFRef<CGContextRef>::adopting(
        CGBitmapContextCreate(alpha.data(), width, height, 8, width, nullptr, kCGImageAlphaOnly));
    if (!context)
        return std::nullopt;
    CGContextDrawImage(context.get(),
                       CGRectMake(0, 0, static_cast<CGFloat>(width), static_cast<CGFloat>(height)),
                       bitmap);
    return std::ranges::all_of(alpha, [](std::uint8_t value) { return value == 0; });
}

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
    [[nodiscard]] std::optional<bool> isClear() const override {
        return orrivane::isClear(bitmap_);
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
