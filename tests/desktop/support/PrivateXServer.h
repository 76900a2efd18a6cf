#pragma once

#include "ChildProcess.h"

#include <optional>
#include <string>
#include <vector>

namespace orrivane::e2e {

/// An X server on a display nobody else uses, without a screen or in a window; gone with this
/// object.
class PrivateXServer {
  public:
    struct Options {
        int width = 1512; ///< pixels
        int height = 982;
        std::vector<std::string> extraArguments; ///< such as "-extension", "XTEST"
        std::string nestedIn{}; ///< the display that shows it as a window; empty: nobody sees it
    };

    /// Returns when the server takes connections. `directory` receives its log.
    PrivateXServer(const Options& options, const std::string& directory);

    const std::string& display() const { return display_; } ///< such as ":12"
    int width() const { return options_.width; }
    int height() const { return options_.height; }
    ChildProcess& process() { return *process_; }

  private:
    Options options_;
    std::optional<ChildProcess> process_;
    std::string display_;
};

} // namespace orrivane::e2e
