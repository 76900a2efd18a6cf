#pragma once

#include "Image.h"
#include "PixelRect.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>
#include <xcb/xcb.h>

namespace orrivane::e2e {

enum class MapState { unmapped, unviewable, viewable };

/// What the server says of one window.
struct WindowState {
    xcb_window_t id = 0;
    xcb_window_t parent = 0;
    int level = 0;  ///< 0 for the root, 1 for a top level
    PixelRect area; ///< inside the border, on the root
    std::uint8_t depth = 0;
    bool inputOnly = false;
    bool overrideRedirect = false;
    MapState mapState = MapState::unmapped;
    std::string instanceName; ///< first half of WM_CLASS
    std::string className;    ///< second half
    std::string type;         ///< name of the first _NET_WM_WINDOW_TYPE, else empty
    std::optional<std::array<std::uint32_t, 2>> xembed; ///< _XEMBED_INFO: version, flags

    bool operator==(const WindowState&) const = default;
    bool isViewable() const { return mapState == MapState::viewable; }
};

/// A second pair of eyes and hands on a display: its own connection, one request at a time, every
/// reply checked. What vanished meanwhile is an absent value. Throws std::runtime_error only when
/// the connection breaks or an extension asked for is missing.
class Observer {
  public:
    explicit Observer(const std::string& display);
    ~Observer();
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    xcb_window_t root() const;
    PixelRect rootArea() const;

    // Windows
    /// Every window, parents before children, siblings from the bottom to the top.
    std::vector<WindowState> tree();
    std::vector<WindowState> topLevels();
    std::optional<WindowState> window(xcb_window_t id);
    bool sameClient(xcb_window_t a, xcb_window_t b) const;
    /// The process behind a window, told by the server itself.
    std::optional<pid_t> pidOf(xcb_window_t id);
    /// The deepest viewable window under a place.
    xcb_window_t leafAt(const PixelPoint& place);
    /// Absent when no window is active, or no window manager says so.
    std::optional<xcb_window_t> activeWindow();
    xcb_window_t focusWindow();
    /// 0 without an owner.
    xcb_window_t selectionOwner(const std::string& selection);

    // The tray
    /// 0 without a tray.
    xcb_window_t trayOwner();
    /// Windows with _XEMBED_INFO of another client inside a window of the tray's, left to right.
    std::vector<WindowState> trayIcons();
    /// The top level of type dock that holds `icon`, or any dock when 0 is given.
    std::optional<WindowState> dockOf(xcb_window_t icon = 0);
    /// Viewable override-redirect top levels over 8 x 8 on the screen, tooltips left out.
    std::vector<WindowState> popups();

    // Pixels
    /// As the window shows now; absent when it is gone or not wholly on the screen.
    std::optional<Image> imageOf(xcb_window_t id);
    Image imageOfRoot();
    Image imageOfRoot(const PixelRect& area);

    // Hands: what the user does
    PixelPoint pointer();
    void movePointer(const PixelPoint& place);
    void button(std::uint8_t number, bool down);
    void click(const PixelPoint& place, std::uint8_t number = 1);
    void key(xcb_keysym_t symbol, bool down);
    void tapKey(xcb_keysym_t symbol, int times = 1);
    /// The same while `modifier` is held.
    void tapKeyWith(xcb_keysym_t modifier, xcb_keysym_t symbol, int times = 1);

    // Root properties
    using Cardinals = std::vector<std::uint32_t>;
    std::optional<Cardinals> cardinals(xcb_window_t id, const std::string& property);
    void setCardinals(xcb_window_t id, const std::string& property, const Cardinals& values);
    void deleteProperty(xcb_window_t id, const std::string& property);
    /// _ORRIVANE_DISPLAY_CUTOUT: x, y, width, height a cutout.
    std::vector<PixelRect> cutouts();
    void setCutouts(const std::vector<PixelRect>& cutouts);

    /// No other client is served between the two; keep it short.
    void grabServer();
    void ungrabServer();

    xcb_atom_t atom(const std::string& name);
    bool hasExtension(const std::string& name);
    xcb_connection_t* connection() const;

  private:
    void requireInput();

    struct Wire;
    std::unique_ptr<Wire> wire_;
};

/// X keysyms the tests need, as the protocol's appendix numbers them.
inline constexpr xcb_keysym_t keySpace = ' ';
inline constexpr xcb_keysym_t keyTab = 0xff09;
inline constexpr xcb_keysym_t keyReturn = 0xff0d;
inline constexpr xcb_keysym_t keyEscape = 0xff1b;
inline constexpr xcb_keysym_t keyLeft = 0xff51;
inline constexpr xcb_keysym_t keyRight = 0xff53;
inline constexpr xcb_keysym_t keyDown = 0xff54;
inline constexpr xcb_keysym_t keyShift = 0xffe1;
inline constexpr xcb_keysym_t keyControl = 0xffe3;
inline constexpr xcb_keysym_t keyAlt = 0xffe9;
inline constexpr xcb_keysym_t keySuper = 0xffeb;

} // namespace orrivane::e2e
