#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <desktop/support/XServer.h>

#include <xcb/xcb.h>

namespace orrivane::desktop {

enum class TrayAtom : std::size_t {
    barColors,
    itemMetrics,
    manager,
    orientation,
    trayColors,
    trayOpcode,
    traySelection,
    xembed,
    xembedInfo,
    count,
};

/// What a client's window says of itself when it docks.
struct IconFacts {
    std::string application; ///< WM_CLASS's class
    int declaredWidth = 0;   ///< pixels, by WM_NORMAL_HINTS; 0: it declares none
    int width = 0;           ///< pixels, as the window is now
    bool wantsToShow = true;
};

/// The tray's own connection to the X server: what it owns and embeds goes when it goes, and the
/// toolkit never sees its events. Errors about windows that vanished are dropped.
class TrayWire {
  public:
    /// Null with a sentence in `problem` when there is no server.
    static std::unique_ptr<TrayWire> open(std::string& problem);
    TrayWire(const TrayWire&) = delete;
    TrayWire& operator=(const TrayWire&) = delete;
    ~TrayWire() { xcb_disconnect(connection_); }

    [[nodiscard]] xcb_connection_t* raw() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] xcb_atom_t atom(TrayAtom name) const {
        return atoms_[static_cast<std::size_t>(name)];
    }

    /// Absent when the window is gone.
    [[nodiscard]] std::optional<IconFacts> factsOf(xcb_window_t icon) const;
    void setCardinals(xcb_window_t window, TrayAtom property,
                      const std::vector<std::uint32_t>& values) const;
    void send(xcb_window_t to, xcb_atom_t type, const std::array<std::uint32_t, 5>& data,
              std::uint32_t eventMask) const;
    /// For a request that fails only when a client's window has gone.
    void ignore(xcb_void_cookie_t cookie) const { xcb_discard_reply(connection_, cookie.sequence); }

  private:
    TrayWire(xcb_connection_t* connection, int screenNumber);
    [[nodiscard]] bool internAtoms(int screenNumber);

    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    std::array<xcb_atom_t, static_cast<std::size_t>(TrayAtom::count)> atoms_{};
};

} // namespace orrivane::desktop
