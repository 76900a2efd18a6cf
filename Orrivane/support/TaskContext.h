#pragma once

#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/support/ObserverList.h>

#include <coroutine>
#include <functional>
#include <memory>
#include <utility>

namespace orrivane {

/// What all coroutines of one started task share: the loop that runs them, whether the task was
/// cancelled, and the root frame. Kept alive only by whatever will resume the task, so a task that
/// can never be resumed is destroyed with its last awaiter's source.
class TaskContext : public std::enable_shared_from_this<TaskContext> {
  public:
    explicit TaskContext(MainLoop& loop)
        : loop_(loop) {}
    TaskContext(const TaskContext&) = delete;
    TaskContext& operator=(const TaskContext&) = delete;
    ~TaskContext();

    [[nodiscard]] MainLoop& loop() const { return loop_; }
    [[nodiscard]] bool isCancelled() const { return cancelled_; }

    void cancel();
    /// `react` runs once, inside `cancel()`.
    Subscription onCancel(std::function<void()> react) { return observers_.add(std::move(react)); }

    /// Takes over the frame; `finish` runs once when it has run to its end and may throw its error.
    void adopt(std::coroutine_handle<> root, std::function<void()> finish);
    void resume(std::coroutine_handle<> frame);

  private:
    MainLoop& loop_;
    bool cancelled_ = false;
    ObserverList<> observers_;
    std::coroutine_handle<> root_;
    std::function<void()> finish_;
};

/// The right to resume one suspended coroutine, once.
class Continuation {
  public:
    Continuation() = default;
    Continuation(std::shared_ptr<TaskContext> context, std::coroutine_handle<> frame)
        : context_(std::move(context))
        , frame_(frame) {}

    explicit operator bool() const { return context_ != nullptr; }
    [[nodiscard]] TaskContext& context() const { return *context_; }

    void resume() {
        const auto context = std::exchange(context_, nullptr);
        context->resume(frame_);
    }

  private:
    std::shared_ptr<TaskContext> context_;
    std::coroutine_handle<> frame_;
};

/// What every promise of this program knows about its surroundings.
struct TaskPromiseBase {
    TaskContext* context = nullptr; // alive while the frame runs or waits
    std::coroutine_handle<> awaiting;

    [[nodiscard]] Continuation continuation(std::coroutine_handle<> self) const {
        return {context->shared_from_this(), self};
    }
};

} // namespace orrivane
