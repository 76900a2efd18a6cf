#pragma once

#include <linux/support/PixelRect.h>
#include <linux/x11/Reply.h>

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orrivane::x11 {

struct NewWindow {
    xcb_window_t parent = XCB_NONE; ///< the root
    PixelRect area{0, 0, 24, 24};   ///< inside the parent
    int border = 0;
    bool overrideRedirect = false;
    bool inputOnly = false;
    std::uint8_t depth = 24;      ///< or 32
    std::uint32_t background = 0; ///< a pixel of that depth
};

/// Another program on the display, with a connection of its own. Each operation has been dealt with
/// by the server when it returns; one that the server refuses throws std::runtime_error.
class XClient {
  public:
    explicit XClient(const std::string& display);
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;
    ~XClient();

    [[nodiscard]] xcb_connection_t* raw() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    /// Ends the connection; the server destroys everything it made.
    void leave();

    xcb_window_t create(const NewWindow& options);
    /// As `create`, with an id of an earlier window of this client.
    void createAs(xcb_window_t id, const NewWindow& options);
    void destroy(xcb_window_t window);
    void map(xcb_window_t window);
    void unmap(xcb_window_t window);
    void move(xcb_window_t window, const PixelRect& area);
    void setBorder(xcb_window_t window, int width);
    void reparent(xcb_window_t window, xcb_window_t parent, int x = 0, int y = 0);
    /// Above or below all others, or directly above or below `sibling`.
    void restack(xcb_window_t window, bool above, xcb_window_t sibling = XCB_NONE);
    void circulate(xcb_window_t parent, bool raiseLowest);

    void setAtoms(xcb_window_t window, const std::string& property, const std::string& value);
    void setType(xcb_window_t window, const std::string& ending) {
        setAtoms(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_" + ending);
    }
    void setNumbers(xcb_window_t window, const std::string& property,
                    const std::vector<std::uint32_t>& values, const std::string& type = "CARDINAL");
    void setText(xcb_window_t window, const std::string& property, const std::string& value);
    void remove(xcb_window_t window, const std::string& property);
    void setXembedInfo(xcb_window_t window) {
        setNumbers(window, "_XEMBED_INFO", {0, 1}, "_XEMBED_INFO");
    }
    void own(const std::string& selection, xcb_window_t window);
    /// Tells the root of a selection taken, as its owners do.
    void announce(const std::string& selection, xcb_window_t owner);

    /// Fills the whole window with these pixels of its depth.
    void paint(xcb_window_t window, int width, int height,
               const std::vector<std::uint32_t>& pixels);
    void shapeBounding(xcb_window_t window, const PixelRect& rect);
    void unshapeBounding(xcb_window_t window);
    [[nodiscard]] std::vector<PixelRect> inputShape(xcb_window_t window);

    void listen(xcb_window_t window, std::uint32_t events);
    /// Events of `window` and this type that have come since it was listened to.
    [[nodiscard]] int count(std::uint8_t type, xcb_window_t window);
    /// Waits until the server has dealt with everything sent.
    void sync();
    void grab();
    void ungrab();

  private:
    void require(xcb_void_cookie_t cookie, const std::string& what);
    [[nodiscard]] std::pair<xcb_visualid_t, xcb_colormap_t> visualOf(std::uint8_t depth);

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
    std::map<std::string, xcb_atom_t> atoms_;
    std::map<xcb_window_t, std::uint8_t> depths_;
    xcb_colormap_t deepColours_ = XCB_NONE;
    xcb_visualid_t deepVisual_ = XCB_NONE;
    std::vector<Owned<xcb_generic_event_t>> events_;
};

} // namespace orrivane::x11
