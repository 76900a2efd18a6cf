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

    /// Hears only what `object` posts; of null, what anybody does.
    Subscription addObserver(std::string_view name, Callback callback,
                             const void* object = nullptr);
    /// `object` is whom the notification is about; null: nobody in particular.
    void post(std::string_view name, const UserInfo& userInfo = {}, const void* object = nullptr);

    /// The process-wide default centre.
    static NotificationCenter& defaultCenter();

  private:
    std::map<std::string, ObserverList<UserInfo, const void*>, std::less<>> observers_;
};

} // namespace orrivane
