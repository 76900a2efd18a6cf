#pragma once

#include <desktop/session/SessionOptions.h>

#include <memory>
#include <string>

struct xcb_connection_t;

namespace orrivane::desktop {

/// The session's own connection to its display: what hardware would say, and a look at the tray.
/// Throws std::runtime_error where the display does not answer at all.
class Stage {
  public:
    explicit Stage(const std::string& display);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    /// Tells everybody where the camera housing is.
    void setCutout(const Panel& panel);
    /// A second monitor right of the first one, which keeps the size of `panel`.
    void addSecondScreen(const Panel& panel, int width, int height);

    /// Whether the window manager manages windows already: it announces itself somewhat before.
    /// Looks at a window of our own, which it takes away again once it was managed.
    [[nodiscard]] bool windowsAreManaged();
    [[nodiscard]] bool trayHasOwner();
    /// How many icons the tray holds.
    [[nodiscard]] int dockedItems();

  private:
    [[nodiscard]] unsigned atom(const std::string& name);
    [[nodiscard]] unsigned trayOwner();

    xcb_connection_t* connection_;
    unsigned root_ = 0;
    unsigned probe_ = 0; // 0: none
};

} // namespace orrivane::desktop
