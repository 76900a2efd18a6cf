#pragma once

#include <Orrivane/support/Subscription.h>

#include <functional>

namespace orrivane {

/// The main thread's run loop, for that thread alone but for `post`. Callbacks never run inside the
/// call that registers them. A loop that is being destroyed drops whatever it still holds and
/// ignores what is posted meanwhile.
class MainLoop {
  public:
    MainLoop() = default;
    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;
    virtual ~MainLoop() = default;

    /// Runs `work` on a later turn of the loop, in the order of posting. From any thread, while
    /// the loop lives.
    virtual void post(std::function<void()> work) = 0;

    /// Absolute wall-clock time in seconds. May step backwards when the clock is set.
    [[nodiscard]] virtual double now() const = 0;

    /// Fires every `interval` seconds until the handle dies, also while menus or dialogs run their
    /// own loop. A firing may be up to `tolerance` seconds late so that wake-ups coalesce; firings
    /// missed while the thread was busy are not made up for.
    virtual Subscription repeatingTimer(double interval, double tolerance,
                                        std::function<void()> action) = 0;

    /// Fires once after `delay` seconds unless the handle dies first.
    virtual Subscription wakeUp(double delay, std::function<void()> action) = 0;
};

} // namespace orrivane
