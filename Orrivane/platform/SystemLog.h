#pragma once

#include <string_view>

namespace orrivane {

/// The system's log.
class SystemLog {
  public:
    virtual ~SystemLog() = default;

    /// Writes one line. `line` is always an argument of the platform's call, never its format.
    virtual void write(std::string_view line) = 0;
};

} // namespace orrivane
