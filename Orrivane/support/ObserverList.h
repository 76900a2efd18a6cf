#pragma once

#include <Orrivane/support/Subscription.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace orrivane {

/// Callbacks in the order of their registration. A callback may add and remove observers, itself
/// included, and may destroy the list; one removed during a round is not called in that round any
/// more, one added is first called in the next.
template <typename... Arguments>
class ObserverList {
  public:
    using Callback = std::function<void(Arguments...)>;

    Subscription add(Callback callback) {
        const auto token = ++entries_->lastToken;
        entries_->callbacks.emplace(token, std::make_shared<Callback>(std::move(callback)));
        return Subscription([weak = std::weak_ptr(entries_), token] {
            // Out of the map before it dies: what the callback holds may remove other observers.
            if (const auto entries = weak.lock())
                const auto removed = entries->callbacks.extract(token);
        });
    }

    void notify(const Arguments&... arguments) const {
        const std::weak_ptr<Entries> weak = entries_;
        std::vector<std::uint64_t> tokens;
        for (const auto& [token, callback] : entries_->callbacks)
            tokens.push_back(token);
        for (const auto token : tokens) {
            const auto entries = weak.lock();
            if (!entries)
                return;
            const auto found = entries->callbacks.find(token);
            if (found == entries->callbacks.end())
                continue;
            const auto callback = found->second;
            (*callback)(arguments...);
        }
    }

    [[nodiscard]] std::size_t count() const { return entries_->callbacks.size(); }

  private:
    struct Entries {
        std::uint64_t lastToken = 0;
        std::map<std::uint64_t, std::shared_ptr<Callback>> callbacks;
    };
    std::shared_ptr<Entries> entries_ = std::make_shared<Entries>();
};

} // namespace orrivane
