#pragma once

#include "XClient.h"

#include <string>

namespace orrivane::x11 {

/// A tray host: owns the tray's selection through a window of its own and shows a dock.
class FakeTray {
  public:
    static constexpr PixelRect topBar{0, 0, 1512, 28};

    explicit FakeTray(const std::string& display, const PixelRect& dock = topBar);

    XClient client;
    [[nodiscard]] xcb_window_t owner() const { return owner_; }
    [[nodiscard]] xcb_window_t dock() const { return dock_; }

    /// A mapped socket inside the dock, or inside `parent`.
    xcb_window_t addSocket(const PixelRect& inside, xcb_window_t parent = XCB_NONE);
    /// Puts another client's window into `socket` and maps it, as trays do.
    void embed(xcb_window_t icon, xcb_window_t socket, int x = 0, int y = 0);

    /// A window as applications offer it to a tray, not yet docked.
    static xcb_window_t makeIcon(XClient& application, int width, int height,
                                 const NewWindow& like = {});
    /// Makes an icon of `application` and docks it into a socket of its own.
    xcb_window_t add(XClient& application, const PixelRect& inside, const NewWindow& like = {});

  private:
    xcb_window_t owner_;
    xcb_window_t dock_;
};

} // namespace orrivane::x11
