#pragma once

#include <Orrivane/support/Geometry.h>

#include <filesystem>
#include <optional>
#include <string>

namespace orrivane::x11 {

/// The user's own word on where the notch is: one line "x,y,width,height" in root pixels.
class CutoutFile {
  public:
    explicit CutoutFile(std::filesystem::path path)
        : path_(std::move(path)) {}

    /// In the user's configuration folder.
    static CutoutFile ofUser();

    /// Absent when there is no file or it makes no sense.
    [[nodiscard]] std::optional<Rect> read() const;
    /// Replaces the file as a whole. Absent on success, else one sentence.
    [[nodiscard]] std::optional<std::string> write(const Rect& cutout) const;

  private:
    std::filesystem::path path_;
};

} // namespace orrivane::x11
