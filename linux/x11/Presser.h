#pragma once

#include <linux/x11/OpenMenus.h>
#include <linux/x11/StatusItems.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace orrivane::x11 {

enum class PointerButton : std::uint8_t { primary = 1, secondary = 3 };

/// Presses a tray icon as a hand would: the pointer goes to its centre, clicks and comes back, all
/// in one flush. Toolkits of all generations take that; none of them takes a sent event.
class Presser {
  public:
    /// The code for "the messaging failed, or the application is busy or gone".
    static constexpr int cannotComplete = -25204;

    Presser(Connection& connection, WindowTree& tree, StatusItems& items, OpenMenus& menus)
        : connection_(connection)
        , tree_(tree)
        , items_(items)
        , menus_(menus) {}

    /// The program's own panel, which steps aside where it lies over the icon.
    void setPanel(std::uint32_t window) { panel_ = window; }

    /// 0, or `cannotComplete` when the icon is gone or another window would take the click.
    int press(std::uint32_t icon, PointerButton button);

  private:
    struct Spot {
        int x;
        int y;
    };
    [[nodiscard]] bool panelLiesOver(const Spot& spot) const;
    void setPanelTakesInput(bool takes);
    [[nodiscard]] std::optional<Spot> pointerIfReachable(std::uint32_t icon, const Spot& spot);
    void click(const Spot& spot, const Spot& back, PointerButton button);

    Connection& connection_;
    WindowTree& tree_;
    StatusItems& items_;
    OpenMenus& menus_;
    std::uint32_t panel_ = 0;
};

} // namespace orrivane::x11
