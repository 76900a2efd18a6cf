#pragma once

#include <desktop/bar/AppMenu.h>
#include <desktop/bar/MenuTitleStyle.h>

#include <memory>
#include <string>
#include <vector>

#include <QMenuBar>

class QMenu;

namespace orrivane::desktop {

/// The menus of an application along the left of the bar. A window of its own to the X server, as
/// wide as its titles are, so that what it takes of the bar shows from outside too.
class MenuTitles final : public QMenuBar {
    Q_OBJECT

  public:
    MenuTitles(const Theme& theme, QWidget* parent);
    ~MenuTitles() override;

    /// The first menu is called `name` and holds `nameEntries`; an entry "-" is a separator.
    void showMenus(const std::string& name, const std::vector<std::string>& nameEntries,
                   const std::vector<AppMenu>& menus);
    /// Takes the room it needs from `left` on, but none from `limit`; pixels of the parent.
    void setPlace(int left, int limit, int height);

  signals:
    /// `menu` counts from 0; the one with the name is -1. `entry` counts separators too.
    void chosen(int menu, int entry);

  private:
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;
    void append(int number, const AppMenu& menu);

    std::unique_ptr<MenuTitleStyle> titleStyle_;
    std::vector<QMenu*> menus_;
};

} // namespace orrivane::desktop
