#pragma once

#include <Orrivane/support/Task.h>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace orrivane {

enum class SleepOutcome { elapsed, cancelled };

/// `co_await Sleep(seconds)`: ends early, and says so, when the task is cancelled.
class Sleep {
  public:
    explicit Sleep(double seconds)
        : seconds_(seconds) {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <typename Promise>
    bool await_suspend(std::coroutine_handle<Promise> self) {
        return suspend(self.promise().continuation(self));
    }
    SleepOutcome await_resume() const noexcept { return outcome_; }

  private:
    struct State;
    bool suspend(Continuation continuation);

    double seconds_;
    SleepOutcome outcome_ = SleepOutcome::elapsed;
};

/// A callback's answer on its way to a waiting task. Copies share one answer; the first one given
/// counts. When the last copy dies unanswered the task goes on without a value. Main thread only.
template <typename T>
class Completion {
  public:
    struct State {
        Continuation continuation;
        std::optional<T>* result = nullptr; // lives in the frame the continuation keeps
        Subscription watchdog;

        State() = default;
        State(const State&) = delete;
        State& operator=(const State&) = delete;
        ~State() { resolve(std::nullopt); }

        void resolve(std::optional<T> answer) {
            if (!continuation)
                return;
            watchdog.reset();
            *result = std::move(answer);
            auto& loop = continuation.context().loop();
            loop.post([next = std::exchange(continuation, {})]() mutable { next.resume(); });
        }
    };

    explicit Completion(std::shared_ptr<State> state)
        : state_(std::move(state)) {}
    void operator()(T answer) const { state_->resolve(std::move(answer)); }

  private:
    std::shared_ptr<State> state_;
};

/// `co_await Answer<T>(begin, seconds)`: `begin` is called at once with a Completion; the result is
/// its answer, or absent when none came within `seconds` or none can come any more. What `begin`
/// throws is thrown here.
template <typename T>
class Answer {
  public:
    using Begin = std::function<void(Completion<T>)>;

    Answer(Begin begin, double seconds)
        : begin_(std::move(begin))
        , seconds_(seconds) {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <typename Promise>
    void await_suspend(std::coroutine_handle<Promise> self) {
        // `begin` may destroy the frame's other owners, so only locals are touched after it.
        const auto state = std::make_shared<typename Completion<T>::State>();
        state->continuation = self.promise().continuation(self);
        state->result = &result_;
        const auto begin = std::move(begin_);
        state->watchdog =
            state->continuation.context().loop().wakeUp(seconds_, [weak = std::weak_ptr(state)] {
                if (const auto waiting = weak.lock())
                    waiting->resolve(std::nullopt);
            });
        // Left to fly, an error would go on here while the dying completion resumes the task too.
        try {
            begin(Completion<T>(state));
        } catch (...) {
            error_ = std::current_exception();
            state->resolve(std::nullopt);
        }
    }
    std::optional<T> await_resume() {
        if (error_)
            std::rethrow_exception(error_);
        return std::move(result_);
    }

  private:
    Begin begin_;
    double seconds_;
    std::optional<T> result_;
    std::exception_ptr error_;
};

} // namespace orrivane
