#pragma once

#include <Orrivane/platform/MainLoop.h>

#include <memory>

namespace orrivane {

/// The main run loop in its common modes, so that menus and dialogs hold nothing up. Handles may
/// outlive it.
class RunLoopMainLoop : public MainLoop {
  public:
    RunLoopMainLoop();
    ~RunLoopMainLoop() override;

    /// From any thread.
    void post(std::function<void()> work) override;
    [[nodiscard]] double now() const override;
    Subscription repeatingTimer(double interval, double tolerance,
                                std::function<void()> action) override;
    Subscription wakeUp(double delay, std::function<void()> action) override;

  private:
    class Queue;
    struct Timers;

    std::shared_ptr<Queue> queue_;
    std::unique_ptr<Timers> timers_;
};

} // namespace orrivane
