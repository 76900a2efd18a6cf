#pragma once

#include <Orrivane/support/Geometry.h>

#include <optional>
#include <string>
#include <utility>

namespace orrivane::x11 {

/// The user's own word on where the notch is: one line "x,y,width,height" in root pixels.
class CutoutFile {
  public:
    /// An empty path, as of a user without a home, holds nothing.
    explicit CutoutFile(std::string path)
        : path_(std::move(path)) {}

    /// In the user's configuration folder.
    static CutoutFile ofUser();

    /// Absent when there is no file or it makes no sense.
    [[nodiscard]] std::optional<Rect> read() const;
    /// Replaces the file as a whole. Absent on success, else one sentence.
    [[nodiscard]] std::optional<std::string> write(const Rect& cutout) const;

  private:
    std::string path_;
};

} // namespace orrivane::x11
