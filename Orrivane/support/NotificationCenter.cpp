#include <Orrivane/support/NotificationCenter.h>

#include <utility>

namespace orrivane {

Subscription NotificationCenter::addObserver(std::string_view name, Callback callback) {
    return observers_[std::string(name)].add(std::move(callback));
}

void NotificationCenter::post(std::string_view name, const UserInfo& userInfo) {
    const auto found = observers_.find(name);
    if (found != observers_.end())
        found->second.notify(userInfo);
}

NotificationCenter& NotificationCenter::defaultCenter() {
    static NotificationCenter center;
    return center;
}

} // namespace orrivane
