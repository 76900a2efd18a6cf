#pragma once

#include <Orrivane/support/ObserverList.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace orrivane {

/// Facts that travel with a notification, by name.
using UserInfo = std::map<std::string, double, std::less<>>;

/// The program's own notifications, delivered at once on the main thread, in the order in which
/// the observers registered.
class NotificationCenter {
  public:
    using Callback = std::function<void(const UserInfo&)>;

    Subscription addObserver(std::string_view name, Callback callback);
    void post(std::string_view name, const UserInfo& userInfo = {});

    /// The process-wide default centre.
    static NotificationCenter& defaultCenter();

  private:
    std::map<std::string, ObserverList<UserInfo>, std::less<>> observers_;
};

} // namespace orrivane
