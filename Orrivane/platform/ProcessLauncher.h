#pragma once

#include <string>
#include <vector>

namespace orrivane {

/// Launches programs without waiting for them.
class ProcessLauncher {
  public:
    virtual ~ProcessLauncher() = default;

    /// `path` is absolute, `arguments` are without the program's name. False when the launch
    /// failed; what the program did is never reported.
    virtual bool launch(const std::string& path, const std::vector<std::string>& arguments) = 0;
};

} // namespace orrivane
