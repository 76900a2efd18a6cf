#pragma once

#include <cstdint>
#include <vector>

namespace orrivane {

/// The program's own windows, its status item and the tray panel included.
class OwnWindows {
  public:
    virtual ~OwnWindows() = default;

    /// Raw window numbers as the toolkit gives them: signed, and negative or too large for a
    /// window that the window server does not know.
    [[nodiscard]] virtual std::vector<std::int64_t> windowNumbers() = 0;

    /// Whether a window that hosts the main view is visible; the popover does not count.
    [[nodiscard]] virtual bool mainViewWindowIsVisible() = 0;
};

} // namespace orrivane
