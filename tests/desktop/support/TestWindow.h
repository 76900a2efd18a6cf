#pragma once

#include "Observer.h"

#include <string>

namespace orrivane::e2e {

/// A plain window of the test's own: a cover over an icon, an application in front, a full screen.
/// The observer must outlive it.
class TestWindow {
  public:
    struct Options {
        PixelRect area;
        bool overrideRedirect = false; ///< out of the window manager's hands
        bool fullScreen = false;       ///< asks the window manager for the whole screen
        std::string name = "trial";    ///< title and WM_CLASS
        std::uint32_t colour = 0x336699;
    };

    /// Made, not shown.
    TestWindow(Observer& observer, const Options& options);
    ~TestWindow();
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    xcb_window_t id() const { return id_; }
    void map();
    void unmap();
    void raise();
    /// Lets pointer input fall through to what lies below.
    void refuseInput();
    /// The window manager has taken it over (WM_STATE is set).
    bool isManaged();
    WindowState state();

  private:
    void require(xcb_void_cookie_t cookie, const std::string& what);
    void setText(xcb_atom_t property, const std::string& text);

    Observer& observer_;
    xcb_window_t id_ = 0;
};

} // namespace orrivane::e2e
