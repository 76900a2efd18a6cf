#pragma once

#include <Orrivane/platform/MainLoop.h>

#include <memory>

namespace orrivane {

/// The event loop of the application object, which must exist and belong to this thread.
/// Handles may outlive the loop.
class QtMainLoop : public MainLoop {
  public:
    QtMainLoop();
    ~QtMainLoop() override;

    void post(std::function<void()> work) override;
    [[nodiscard]] double now() const override;
    Subscription repeatingTimer(double interval, double tolerance,
                                std::function<void()> action) override;
    Subscription wakeUp(double delay, std::function<void()> action) override;

    /// Drops all that was posted and all timers, and the tasks that wait for them; whatever comes
    /// later is dropped as well. The end of a loop does the same.
    void close();

  private:
    class Receiver;
    std::shared_ptr<Receiver> receiver_;
};

/// When a firing that is due at `due` happens, in seconds of the monotonic clock: at the coarsest
/// round fraction of a second within `tolerance`, so that the timers of all programs meet.
double alignedFiring(double due, double tolerance);

/// When a timer that was due at `due` is due again: on its own schedule, later than `now`.
double followingDue(double due, double interval, double now);

} // namespace orrivane
