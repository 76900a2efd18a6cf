#pragma once

#include <Orrivane/platform/UserDefaults.h>
#include <Orrivane/support/ObserverList.h>

#include <map>
#include <string>

namespace orrivane {

/// The standard defaults. Every key that was asked about here is watched by itself: only so does
/// the system tell of values that another process stores.
class FoundationUserDefaults : public UserDefaults {
  public:
    void registerDefault(std::string_view key, bool value) override;
    [[nodiscard]] bool boolForKey(std::string_view key) override;
    void setBool(std::string_view key, bool value) override;
    Subscription onChange(std::function<void()> changed) override;

  private:
    void watch(std::string_view key);

    ObserverList<> observers_;
    std::map<std::string, Subscription, std::less<>> watched_;
};

} // namespace orrivane
