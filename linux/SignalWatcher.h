#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace orrivane {

/// Turns SIGINT, SIGTERM and SIGHUP into a call on the main loop, so that the program ends as from
/// its own menu. One for the process.
class SignalWatcher {
  public:
    explicit SignalWatcher(std::function<void()> ended);
    SignalWatcher(const SignalWatcher&) = delete;
    SignalWatcher& operator=(const SignalWatcher&) = delete;
    ~SignalWatcher();

  private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace orrivane
