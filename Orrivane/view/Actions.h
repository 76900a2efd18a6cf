#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace orrivane {

/// What happens when the user acts. Two actions are never told apart: a renderer takes the newest
/// one with every value, whether anything visible changed or not. An action may replace what is
/// shown, so whoever runs it keeps a copy meanwhile.
struct ViewAction {
    std::function<void()> run; ///< empty: nothing happens

    friend bool operator==(const ViewAction&, const ViewAction&) { return true; }
};

/// An action that is told something, such as the new position of a switch.
template <typename Value>
struct ValueAction {
    std::function<void(Value)> run; ///< empty: nothing happens

    friend bool operator==(const ValueAction&, const ValueAction&) { return true; }
};

/// An action that answers yes or no; an empty one says no.
struct AnsweringAction {
    std::function<bool()> run;

    friend bool operator==(const AnsweringAction&, const AnsweringAction&) { return true; }
};

/// What an action runs: `work` on its owner, told what the action is told, if the owner still
/// exists by then.
template <typename Owner, typename Work>
[[nodiscard]] auto weakly(std::weak_ptr<Owner> owner, Work work) {
    return [owner = std::move(owner), work = std::move(work)](auto... told) {
        if (const auto self = owner.lock())
            work(*self, told...);
    };
}

} // namespace orrivane
