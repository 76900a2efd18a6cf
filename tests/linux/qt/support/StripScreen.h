#pragma once

#include <QImage>
#include <QPoint>

#include <linux/support/PixelRect.h>

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace orrivane {

/// The X server as another client sees it, and the hands of a user.
class StripScreen {
  public:
    StripScreen();
    StripScreen(const StripScreen&) = delete;
    StripScreen& operator=(const StripScreen&) = delete;
    ~StripScreen();

    /// What the screen shows there.
    QImage read(const PixelRect& rect);
    PixelRect geometry(std::uint32_t window);
    bool isMapped(std::uint32_t window);
    bool isOverrideRedirect(std::uint32_t window);
    std::uint32_t focus();
    /// The root's children, bottom to top.
    std::vector<std::uint32_t> stack();

    void place(std::uint32_t window, const PixelRect& rect, std::uint32_t above);
    /// A mapped window that the window manager would leave alone.
    std::uint32_t addWindow(const PixelRect& rect, std::uint32_t color);
    /// Writes into a window what it did not draw itself.
    void scribble(std::uint32_t window, const PixelRect& rect, std::uint32_t color);

    void move(QPoint position);
    void click(QPoint position, std::uint8_t button);
    /// The first button, where the pointer is.
    void hold(bool down);

  private:
    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
};

} // namespace orrivane
