#pragma once

#include <memory>
#include <optional>
#include <utility>

namespace orrivane {

/// What a platform keeps behind an `Image`: a bitmap it captured or decoded, never changed after.
class ImageBody {
  public:
    ImageBody() = default;
    ImageBody(const ImageBody&) = delete;
    ImageBody& operator=(const ImageBody&) = delete;
    virtual ~ImageBody() = default;

    [[nodiscard]] virtual int pixelWidth() const = 0;
    [[nodiscard]] virtual int pixelHeight() const = 0;
    /// Whether every pixel is fully transparent; absent where that cannot be told. Reads them all.
    [[nodiscard]] virtual std::optional<bool> isClear() const { return std::nullopt; }
};

/// An immutable bitmap as an opaque handle. Copies share the body; two handles are equal when they
/// are the same capture. Captured images hold two pixels per point.
class Image {
  public:
    explicit Image(std::shared_ptr<const ImageBody> body)
        : body_(std::move(body)) {}

    [[nodiscard]] int pixelWidth() const { return body_->pixelWidth(); }
    [[nodiscard]] int pixelHeight() const { return body_->pixelHeight(); }
    /// For the platform that made the image.
    [[nodiscard]] const ImageBody& body() const { return *body_; }

    friend bool operator==(const Image&, const Image&) = default;

  private:
    std::shared_ptr<const ImageBody> body_; // never null
};

} // namespace orrivane
