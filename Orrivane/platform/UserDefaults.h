#pragma once

#include <Orrivane/support/Subscription.h>

#include <functional>
#include <string_view>

namespace orrivane {

/// The program's own stored Booleans.
class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    /// A fallback that reads find while nothing is stored; never written to disk.
    virtual void registerDefault(std::string_view key, bool value) = 0;
    /// The stored value, else the registered fallback, else false.
    [[nodiscard]] virtual bool boolForKey(std::string_view key) = 0;
    virtual void setBool(std::string_view key, bool value) = 0;

    /// Called on the main thread after any stored value changed, whoever changed it.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

} // namespace orrivane
