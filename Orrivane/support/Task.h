#pragma once

#include <Orrivane/support/TaskContext.h>

#include <coroutine>
#include <exception>
#include <memory>
#include <optional>
#include <utility>

namespace orrivane {

namespace detail {

struct ReturnToAwaiting {
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <typename Promise>
    std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> finished) const noexcept {
        const auto awaiting = finished.promise().awaiting;
        return awaiting ? awaiting : std::noop_coroutine();
    }
    void await_resume() const noexcept {}
};

template <typename T>
struct TaskResult {
    std::optional<T> value;
    std::exception_ptr error;

    void return_value(T result) { value.emplace(std::move(result)); }
    T take() {
        if (error)
            std::rethrow_exception(error);
        return std::move(*value);
    }
};

template <>
struct TaskResult<void> {
    std::exception_ptr error;

    void return_void() const noexcept {}
    void take() const {
        if (error)
            std::rethrow_exception(error);
    }
};

} // namespace detail

/// A lazy coroutine on the main thread: nothing runs before it is awaited or started. Owns its
/// frame; dropping a task that was never awaited drops its work.
template <typename T = void>
class [[nodiscard]] Task {
  public:
    struct promise_type : TaskPromiseBase, detail::TaskResult<T> {
        Task get_return_object() {
            return Task(std::coroutine_handle<promise_type>::from_promise(*this));
        }
        [[nodiscard]] std::suspend_always initial_suspend() const noexcept { return {}; }
        [[nodiscard]] detail::ReturnToAwaiting final_suspend() const noexcept { return {}; }
        void unhandled_exception() noexcept { this->error = std::current_exception(); }
    };
    using Handle = std::coroutine_handle<promise_type>;

    Task(Task&& other) noexcept
        : frame_(std::exchange(other.frame_, nullptr)) {}
    Task& operator=(Task&& other) noexcept {
        if (this != &other) {
            drop();
            frame_ = std::exchange(other.frame_, nullptr);
        }
        return *this;
    }
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task() { drop(); }

    /// Runs the task inside the awaiting one and hands over its value or error.
    class Awaiter {
      public:
        explicit Awaiter(Handle frame)
            : frame_(frame) {}
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> awaiting) noexcept {
            frame_.promise().context = awaiting.promise().context;
            frame_.promise().awaiting = awaiting;
            return frame_;
        }
        T await_resume() { return frame_.promise().take(); }

      private:
        Handle frame_;
    };
    Awaiter operator co_await() && noexcept { return Awaiter(frame_); }

    /// For `start`: gives the frame away.
    Handle release() { return std::exchange(frame_, nullptr); }

  private:
    explicit Task(Handle frame)
        : frame_(frame) {}
    void drop() {
        if (frame_)
            frame_.destroy();
    }

    Handle frame_;
};

/// Refers to a started task without owning it: a task once begun runs to its end unless cancelled.
class TaskHandle {
  public:
    TaskHandle() = default;
    explicit TaskHandle(std::weak_ptr<TaskContext> context)
        : context_(std::move(context)) {}

    /// Ends the sleep the task is in, and every later one, early. The task decides what follows.
    void cancel() const {
        if (const auto context = context_.lock())
            context->cancel();
    }
    [[nodiscard]] bool isRunning() const { return !context_.expired(); }

  private:
    std::weak_ptr<TaskContext> context_;
};

/// Runs `task` from the loop's next turn on. An error nobody awaited leaves through the loop.
TaskHandle start(MainLoop& loop, Task<void> task);

} // namespace orrivane
