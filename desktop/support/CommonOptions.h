#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orrivane::desktop {

/// What every process of the desktop takes on its command line.
struct CommonOptions {
    double scale = 1; ///< pixels a point, 0.5 to 4
    bool dark = false;
    std::vector<std::string> rest; ///< the other arguments, in order

    /// Absent, with a sentence in `error`, when `--scale` has no usable number.
    static std::optional<CommonOptions> parse(int argc, char** argv, std::string& error);
};

/// Called before the QApplication is made: the processes draw at their scale themselves, so that
/// what they tell assistive programs is in pixels of the root window.
void keepToolkitUnscaled();

} // namespace orrivane::desktop
