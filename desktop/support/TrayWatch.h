#pragma once

#include <desktop/support/XServer.h>

#include <QAbstractNativeEventFilter>
#include <QColor>
#include <QObject>

namespace orrivane::desktop {

/// What the bar tells its items; points.
struct BarLook {
    QColor background;
    QColor foreground;
    int spacing = 16;
    int selectionPadding = 14;
};

/// Follows the owner of the first screen's tray selection.
class TrayWatch final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    /// `look` is what holds where the tray says nothing.
    explicit TrayWatch(const BarLook& look);
    ~TrayWatch() override;

    /// The tray's window; 0 without a tray.
    xcb_window_t owner() const { return owner_; }
    const BarLook& look() const { return look_; }
    /// Asks the tray to embed a window of this process.
    void requestDock(xcb_window_t window) const;

  signals:
    /// Another tray than before, or none; windows docked until now have lost their place.
    void trayChanged();
    void lookChanged();

  private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void lookUp();
    void lookUpLater();
    xcb_window_t currentOwner() const;
    void readLook();

    xcb_atom_t selection_;
    xcb_atom_t manager_;
    xcb_atom_t colors_;
    xcb_atom_t metrics_;
    xcb_window_t owner_ = 0;
    bool lost_ = false; // the last owner died and nobody has been told yet
    BarLook fallback_;
    BarLook look_;
};

} // namespace orrivane::desktop
