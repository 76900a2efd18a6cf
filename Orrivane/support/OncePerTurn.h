#pragma once

#include <Orrivane/platform/MainLoop.h>

#include <functional>
#include <memory>
#include <utility>

namespace orrivane {

/// Folds any number of requests within one turn of the loop into one call on the next: a view
/// redraws once however many fields of its model changed.
class OncePerTurn {
  public:
    OncePerTurn(MainLoop& loop, std::function<void()> action)
        : loop_(loop)
        , state_(std::make_shared<State>()) {
        state_->action = std::move(action);
    }
    OncePerTurn(const OncePerTurn&) = delete;
    OncePerTurn& operator=(const OncePerTurn&) = delete;

    void request() {
        if (std::exchange(state_->requested, true))
            return;
        loop_.post([weak = std::weak_ptr(state_)] {
            if (const auto state = weak.lock()) {
                state->requested = false;
                state->action();
            }
        });
    }

  private:
    struct State {
        std::function<void()> action;
        bool requested = false;
    };
    MainLoop& loop_;
    std::shared_ptr<State> state_;
};

} // namespace orrivane
