#pragma once

#include <Orrivane/platform/MainLoop.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace orrivane {

/// A main loop whose time passes only when a test says so. Posted work runs in the order of
/// posting; timers run by due time, then in the order of their creation. Timers follow the virtual
/// time that has passed, never the wall clock, which a test may set forwards and backwards. What
/// callbacks throw leaves through the operation that ran them; the loop stays usable.
class VirtualLoop : public MainLoop {
  public:
    /// An installed timer; all lengths in seconds.
    struct InstalledTimer {
        double interval = 0; ///< or the delay of a one-shot timer
        double tolerance = 0;
        bool repeats = false;
        double dueIn = 0;

        friend bool operator==(const InstalledTimer&, const InstalledTimer&) = default;
    };

    VirtualLoop();
    ~VirtualLoop() override;

    void post(std::function<void()> work) override;
    [[nodiscard]] double now() const override;
    Subscription repeatingTimer(double interval, double tolerance,
                                std::function<void()> action) override;
    Subscription wakeUp(double delay, std::function<void()> action) override;

    /// Runs what is posted and due until there is nothing left to do at this instant.
    void runUntilIdle();
    /// Runs the work posted last, and nothing else; false when nothing is posted.
    bool runNewestPost();
    /// Lets `seconds` pass, running everything that falls due, each at its own instant.
    void advance(double seconds);
    /// Keeps the thread busy: time passes and nothing runs. May be called from a callback.
    void block(double seconds);
    /// Sets the wall clock; timers do not notice.
    void setNow(double seconds);

    /// Virtual seconds since the loop was made.
    [[nodiscard]] double elapsed() const;
    /// What is installed, in the order in which it will fire.
    [[nodiscard]] std::vector<InstalledTimer> timers() const;
    [[nodiscard]] std::size_t timerCount() const;
    [[nodiscard]] std::size_t repeatingTimerCount() const;
    [[nodiscard]] std::size_t pendingPosts() const;

  private:
    struct State;

    Subscription install(double seconds, double tolerance, bool repeats,
                         std::function<void()> action);
    bool runOnePost();
    bool fireOneTimer(std::int64_t until);

    std::shared_ptr<State> state_;
};

} // namespace orrivane
