#pragma once

#include <linux/support/Outcome.h>

#include <string>
#include <string_view>

namespace orrivane {

/// Replaces a file, or makes it and its folder: whoever reads it, also after a crash or with the
/// disk full, finds the old contents or the new ones, never a part. A link is followed, the mode is
/// kept. A failure is told in the system's own words.
Outcome replaceFile(const std::string& path, std::string_view contents);

/// What one writer at a time holds while it reads a file and replaces it.
class FileLock {
  public:
    /// Waits for another writer, but no longer than a quarter of a second; holds nothing for
    /// an empty path.
    explicit FileLock(const std::string& path);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    [[nodiscard]] bool isHeld() const { return held_; }

  private:
    int file_ = -1;
    bool held_ = false;
};

} // namespace orrivane
