#include <Orrivane/support/NotificationCenter.h>

#include <utility>

namespace orrivane {

Subscription NotificationCenter::addObserver(std::string_view name, Callback callback,
                                             const void* object) {
    return observers_[std::string(name)].add(
        [callback = std::move(callback), object](const UserInfo& userInfo, const void* poster) {
            if (!object || object == poster)
                callback(userInfo);
        });
}

void NotificationCenter::post(std::string_view name, const UserInfo& userInfo, const void* object) {
    const auto found = observers_.find(name);
    if (found != observers_.end())
        found->second.notify(userInfo, object);
}

NotificationCenter& NotificationCenter::defaultCenter() {
    static NotificationCenter center;
    return center;
}

} // namespace orrivane
