#pragma once

#include <Orrivane/platform/SystemLog.h>

namespace orrivane {

/// The system's unified log, readable without a debugger. It cuts off lines above about a thousand
/// bytes.
class UnifiedLog : public SystemLog {
  public:
    void write(std::string_view line) override;
};

} // namespace orrivane
