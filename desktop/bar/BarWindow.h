#pragma once

#include <desktop/bar/BarPlace.h>
#include <desktop/bar/Clock.h>
#include <desktop/bar/DesktopMenus.h>
#include <desktop/bar/FrontApplication.h>
#include <desktop/bar/MenuTitles.h>
#include <desktop/bar/Notch.h>
#include <desktop/bar/RootWatch.h>
#include <desktop/bar/TrayHost.h>

#include <QWidget>

namespace orrivane::desktop {

/// The bar along the top of the screen and everything in it.
class BarWindow final : public QWidget {
    Q_OBJECT

  public:
    BarWindow(const Theme& theme, std::unique_ptr<TrayWire> wire, const TrayHost::Settings& trayed);

  signals:
    /// It cannot go on; `sentence` says why.
    void failed(const QString& sentence);

  private:
    void paintEvent(QPaintEvent* event) override;
    void begin();
    void follow();
    void arrange();
    void takeDockType();
    void reserveRoom();
    void showMenus();
    void choose(int menu, int entry);

    Theme theme_;
    RootWatch root_;
    FrontApplication front_;
    DesktopMenus ownMenus_;
    Notch notch_;
    MenuTitles titles_;
    Clock clock_;
    BarPlace place_;
    std::unique_ptr<TrayHost> tray_;
};

} // namespace orrivane::desktop
