#pragma once

#include <Orrivane/platform/ProcessLauncher.h>

namespace orrivane {

/// Launches a program with the standard streams on /dev/null. Nobody waits for it, and it leaves no
/// zombie behind.
class TaskLauncher : public ProcessLauncher {
  public:
    bool launch(const std::string& path, const std::vector<std::string>& arguments) override;
};

} // namespace orrivane
