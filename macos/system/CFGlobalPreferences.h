#pragma once

#include <Orrivane/platform/GlobalPreferences.h>

namespace orrivane {

/// The global domain of the current user on this host. A program in a sandbox may not write it.
class CFGlobalPreferences : public GlobalPreferences {
  public:
    /// The nearest integer to a number that is none, as far as the system can tell it.
    std::optional<std::int64_t> copyValue(std::string_view key) override;
    /// Changes nothing where the system has no memory for the value.
    void setValue(std::string_view key, std::optional<std::int64_t> value) override;
    bool synchronize() override;
};

} // namespace orrivane
