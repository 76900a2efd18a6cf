#pragma once

#include <Orrivane/platform/ProcessLauncher.h>

#include <functional>
#include <utility>

namespace orrivane {

/// Launches as the one it is given does, and tells of a restart of the menu bar: trays of other
/// programs have no process of the menu bar's name that a launch could restart.
class RestartLauncher : public ProcessLauncher {
  public:
    RestartLauncher(ProcessLauncher& launcher, std::function<void()> restarted)
        : launcher_(launcher)
        , restarted_(std::move(restarted)) {}

    bool launch(const std::string& path, const std::vector<std::string>& arguments) override;

  private:
    ProcessLauncher& launcher_;
    std::function<void()> restarted_;
};

} // namespace orrivane
