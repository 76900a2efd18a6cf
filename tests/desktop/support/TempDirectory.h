#pragma once

#include <string>

namespace orrivane::e2e {

/// A directory of its own under TMPDIR (or /tmp), mode 0700; removed with all it holds.
class TempDirectory {
  public:
    /// Throws std::runtime_error when no directory can be made.
    explicit TempDirectory(const std::string& prefix = "orrivane-e2e-");
    ~TempDirectory();
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

/// Writes `text` to `path` and makes the missing folders above it. Throws on failure.
void writeFile(const std::string& path, const std::string& text);

/// The text of a file; empty when it cannot be read.
std::string readFile(const std::string& path);

} // namespace orrivane::e2e
