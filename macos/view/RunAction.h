#pragma once

#include <macos/appkit/MainThread.h>

namespace orrivane {

/// Runs a view's action if it is one. By value: what it does may replace the view that holds it.
template <typename Action, typename... Told>
void runAction(Action action, Told... told) noexcept {
    if (action.run)
        action.run(told...);
}

/// The same for an action that answers; false where there is none.
template <typename Action>
[[nodiscard]] bool askAction(Action action) noexcept {
    return action.run && action.run();
}

} // namespace orrivane
