#pragma once

#include <linux/x11/WindowTree.h>

#include <cstdint>
#include <map>
#include <vector>

namespace orrivane::x11 {

/// Which pressed icons have a menu open, told by events alone: a menu is an override-redirect
/// window that the icon's client maps on the screen after the press, larger than a toolkit's helper
/// windows and no tooltip. Two icons of one client are told apart by which was pressed last.
class OpenMenus {
  public:
    OpenMenus(Connection& connection, WindowTree& tree);

    void pressed(std::uint32_t icon);
    /// The menu of `icon` that is open now, else 0.
    [[nodiscard]] std::uint32_t menuOf(std::uint32_t icon);

  private:
    struct Candidate {
        std::uint32_t window;
        std::uint32_t icon;
    };
    void handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool isMenu(const TreeWindow& window) const;

    Connection& connection_;
    WindowTree& tree_;
    std::map<std::uint32_t, std::uint32_t> lastPressed_; // client -> icon
    std::vector<Candidate> candidates_;                  // mapped now
    Subscription events_;
};

} // namespace orrivane::x11
