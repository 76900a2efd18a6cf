#pragma once

#include "Observer.h"

#include <optional>

namespace orrivane::e2e {

/// What the server tells of the windows of one process.
class ProgramWindows {
  public:
    /// `observer` stays its owner's and outlives this.
    ProgramWindows(Observer& observer, pid_t program)
        : observer_(observer)
        , program_(program) {}

    bool own(const WindowState& window);
    /// Its icon in the tray, once that shows.
    std::optional<WindowState> icon();
    /// The first window that shows and is at least this large, in pixels; menus, questions and the
    /// strip are smaller than what holds the main view.
    std::optional<WindowState> large(int width, int height);
    /// A question that it asks over `window`.
    std::optional<WindowState> dialogOver(xcb_window_t window);
    /// The large window, once it has the keyboard and has stopped moving and growing; throws
    /// std::runtime_error when it does not come to rest.
    WindowState largeAtRest(int width, int height);

  private:
    Observer& observer_;
    pid_t program_;
};

} // namespace orrivane::e2e
