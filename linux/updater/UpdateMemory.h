#pragma once

#include <string>

namespace orrivane {

/// What the updater remembers from one run to the next: one small file of lines "name=value" in
/// the user's configuration. What cannot be read counts as never set.
class UpdateMemory {
  public:
    /// An empty path, as of a user without a home, remembers nothing beyond this run.
    explicit UpdateMemory(std::string path)
        : path_(std::move(path)) {
        read();
    }

    static std::string userFile();

    /// Whether checks without the user's asking are allowed; false until the user says so.
    [[nodiscard]] bool checksAutomatically() const { return checksAutomatically_; }
    /// When the last check ended with an answer, in seconds since 1970; 0 if there was none.
    [[nodiscard]] double lastCheck() const { return lastCheck_; }
    /// The version that the user does not want; empty if there is none.
    [[nodiscard]] const std::string& skippedVersion() const { return skippedVersion_; }

    void setChecksAutomatically(bool automatically);
    void setLastCheck(double time);
    void setSkippedVersion(std::string version);

  private:
    void read();
    void write() const;

    std::string path_;
    bool checksAutomatically_ = false;
    double lastCheck_ = 0;
    std::string skippedVersion_;
};

} // namespace orrivane
