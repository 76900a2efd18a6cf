#pragma once

#include <Orrivane/platform/SystemLog.h>

#include <unistd.h>

#include <string>

namespace orrivane {

/// Lines on standard error, which the session passes on to the journal. Never blocks: a line that
/// the other end does not take at once is lost.
class StandardErrorLog : public SystemLog {
  public:
    /// `descriptor` stays the caller's.
    explicit StandardErrorLog(int descriptor = STDERR_FILENO)
        : descriptor_(descriptor) {}

    void write(std::string_view line) override;

    /// The line as it is written: ended, and with every character that a terminal or the journal
    /// could act upon spelt out. At most as long as one write to a pipe is atomic.
    static std::string formatted(std::string_view line);

  private:
    int descriptor_;
};

} // namespace orrivane
