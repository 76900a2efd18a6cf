#pragma once

#include <desktop/items/ItemWindow.h>

#include <memory>

#include <QMenu>
#include <QTimer>

class QActionGroup;

namespace orrivane::desktop {

/// One icon of a status application with its menu: in the tray whenever there is one.
class StatusItem final : public QObject {
    Q_OBJECT

  public:
    /// Kind, tray and theme outlive it.
    StatusItem(const StatusKind& kind, std::size_t part, TrayWatch& tray, const Theme& theme);
    ~StatusItem() override;

  private:
    void redock();
    void fillMenu();
    void addEntry(const MenuEntry& entry, QActionGroup*& radios);
    void openMenu();
    void choose(const MenuEntry& entry);
    void waitForNextStep();
    void step();

    const StatusKind& kind_;
    std::size_t part_;
    TrayWatch& tray_;
    const Theme& theme_;
    ItemState state_;
    QMenu menu_;
    QTimer clock_;
    std::unique_ptr<ItemWindow> window_;
};

} // namespace orrivane::desktop
