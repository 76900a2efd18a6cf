#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace orrivane {

/// The user's global preferences on this host.
class GlobalPreferences {
  public:
    virtual ~GlobalPreferences() = default;

    /// The stored number; absent when there is none or it is no number.
    [[nodiscard]] virtual std::optional<std::int64_t> copyValue(std::string_view key) = 0;
    /// An absent value removes the key.
    virtual void setValue(std::string_view key, std::optional<std::int64_t> value) = 0;
    /// Writes what was set; false when it could not be written.
    virtual bool synchronize() = 0;
};

} // namespace orrivane
