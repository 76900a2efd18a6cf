#pragma once

#include <functional>
#include <memory>

namespace orrivane {

/// Turns SIGINT, SIGTERM and SIGHUP into a call from the main loop, so that the program ends as
/// from its own menu. One for the process.
class SignalWatcher {
  public:
    explicit SignalWatcher(std::function<void()> ended);
    SignalWatcher(const SignalWatcher&) = delete;
    SignalWatcher& operator=(const SignalWatcher&) = delete;
    ~SignalWatcher();

  private:
    struct Sources;
    std::unique_ptr<Sources> sources_;
};

} // namespace orrivane
