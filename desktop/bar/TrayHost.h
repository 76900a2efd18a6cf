#pragma once

#include <desktop/bar/CommandDrag.h>
#include <desktop/bar/ItemRow.h>
#include <desktop/bar/OrderFile.h>
#include <desktop/bar/TrayWire.h>

#include <map>
#include <memory>

#include <QColor>
#include <QObject>
#include <QRect>
#include <QSocketNotifier>
#include <QTimer>

namespace orrivane::desktop {

/// The system tray inside the bar: embeds the icon windows of other processes, packs them from the
/// right and lets them be moved by hand.
class TrayHost final : public QObject {
    Q_OBJECT

  public:
    struct Settings {
        QColor background;
        QColor foreground;
        int spacing = 0;          ///< points, told to the items
        int selectionPadding = 0; ///< points, told to the items
        std::int64_t spacingPixels = 0;
        int leastWidth = 0; ///< pixels of an item that declares no width
    };

    /// `dock` is the toolkit's window that the tray becomes a part of; it outlives the host.
    TrayHost(std::unique_ptr<TrayWire> wire, xcb_window_t dock, const Settings& settings,
             OrderFile orderFile);
    ~TrayHost() override;

    /// Where the tray lies; `onRoot` in pixels of the root window, `inDock` of the dock. Items fill
    /// its height and end at its right.
    void setPlace(const QRect& inDock, QPoint onRoot);

  signals:
    /// The screen's tray is this one; who listens gives it its place before the items come.
    void taken();
    /// A top level was shown or put elsewhere in the order from bottom to top.
    void stackingChanged();
    /// The screen's tray is another program's, or the X server has gone. Said at most once.
    void lost(const QString& sentence);

  private:
    struct Icon {
        bool declaresWidth = false;
        QRect granted; // inside the tray
    };

    void makeTray(xcb_window_t dock);
    void publish() const;
    void drain();
    void drainSoon();
    void handle(const xcb_generic_event_t& event);
    void handleTray(const xcb_generic_event_t& event);
    void handleProperty(const xcb_property_notify_event_t& changed);
    void askForTime() const;
    void takeSelection(xcb_timestamp_t time);
    void giveUp(const QString& sentence);

    void dock(xcb_window_t icon);
    void forget(xcb_window_t icon);
    void readAgain(xcb_window_t icon, xcb_atom_t changed);
    void answerConfigure(const xcb_configure_request_event_t& request);
    void putBack(const xcb_configure_notify_event_t& placed) const;
    void configure(xcb_window_t icon, const QRect& place) const;
    void confirmPlace(xcb_window_t icon, const QRect& place) const;
    void setMapped(xcb_window_t icon, bool mapped) const;
    void arrange();
    void keepOrder();

    std::unique_ptr<TrayWire> wire_;
    Settings settings_;
    OrderFile orderFile_;
    std::vector<ItemKey> keptOrder_;
    ItemRow row_;
    std::map<xcb_window_t, Icon> icons_;
    xcb_window_t tray_ = 0;
    std::unique_ptr<CommandDrag> drag_;
    std::unique_ptr<QSocketNotifier> arrivals_;
    QTimer retry_;
    int attemptsLeft_ = 60;
    bool owning_ = false;
    bool hasGivenUp_ = false;
    QRect place_;
    QPoint onRoot_;
};

} // namespace orrivane::desktop
