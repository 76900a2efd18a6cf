#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include <xcb/xcb.h>

namespace orrivane::bench {

/// Hears when a window below the root is mapped, on an X connection of its own, and stamps the
/// notice with the monotonic clock as it is received.
class MapWatch {
  public:
    using Clock = std::chrono::steady_clock;
    struct Mapped {
        xcb_window_t window = 0;
        Clock::time_point at;
    };

    /// Throws std::runtime_error on failure.
    explicit MapWatch(const std::string& display);
    ~MapWatch();
    MapWatch(const MapWatch&) = delete;
    MapWatch& operator=(const MapWatch&) = delete;

    [[nodiscard]] xcb_connection_t* connection() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return root_; }

    /// Everything sent so far has been processed, and what was noticed until now is forgotten.
    void startAfresh();
    /// The first window that no window manager takes, that is no toolkit's helper and no tooltip,
    /// and that `wanted` accepts. Absent when there was none until then.
    std::optional<Mapped> waitFor(const std::function<bool(xcb_window_t)>& wanted,
                                  Clock::time_point until);

  private:
    [[nodiscard]] bool isProperPopup(xcb_window_t window);
    [[nodiscard]] bool waitForInput(Clock::time_point until) const;

    xcb_connection_t* connection_;
    xcb_window_t root_ = 0;
    xcb_atom_t windowType_ = 0;
    xcb_atom_t tooltip_ = 0;
};

/// The atom of that name. Throws std::runtime_error on failure.
xcb_atom_t atomOf(xcb_connection_t* connection, const std::string& name);

} // namespace orrivane::bench
