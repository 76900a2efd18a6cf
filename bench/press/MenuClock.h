#pragma once

#include <bench/support/MapWatch.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace orrivane::bench {

/// Clicks and tells how long the menu takes: from when the release is handed to the server until
/// the notice that the menu is mapped has been received.
class MenuClock {
  public:
    explicit MenuClock(const std::string& display)
        : watch_(display) {}

    struct Timing {
        double milliseconds = 0;
        xcb_window_t menu = 0;
    };
    /// Clicks at a place on the root and waits for a menu of the client that owns `icon`. Absent
    /// when none was mapped within `bound`.
    std::optional<Timing> click(int x, int y, std::uint8_t button, xcb_window_t icon,
                                std::chrono::milliseconds bound = std::chrono::seconds(3));

  private:
    void fake(std::uint8_t type, std::uint8_t detail, int x, int y);

    MapWatch watch_;
};

} // namespace orrivane::bench
