#pragma once

#include <desktop/bar/AppMenu.h>
#include <desktop/bar/BarPlace.h>
#include <desktop/support/Theme.h>

#include <memory>
#include <string>
#include <vector>

class QMenu;

namespace orrivane::desktop {

/// The menus that show while no window is active, and what they do.
class DesktopMenus {
  public:
    explicit DesktopMenus(const Theme& theme);
    ~DesktopMenus();

    static constexpr auto name = "Desktop";
    [[nodiscard]] std::vector<std::string> nameEntries() const;
    [[nodiscard]] std::vector<AppMenu> menus() const;
    void choose(int menu, int entry, const BarPlace& place);

  private:
    void showNextWallpaper(QSize size) const;
    void showAbout(const BarPlace& place);

    Theme theme_;
    std::unique_ptr<QMenu> about_;
};

} // namespace orrivane::desktop
