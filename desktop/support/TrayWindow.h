#pragma once

#include <desktop/support/TrayWatch.h>

#include <string>

#include <QWidget>

namespace orrivane::desktop {

/// A window that lives in the tray. It docks once: when it has lost its place it is of no more
/// use, and its owner makes another for the next tray.
class TrayWindow : public QWidget, private QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    struct Identity {
        std::string instanceName; ///< halves of WM_CLASS, either may be empty
        std::string className;
        QString title;
    };

    /// `naturalSize` in pixels: what the window tells the tray it wants.
    TrayWindow(const Identity& identity, QSize naturalSize);
    ~TrayWindow() override;

    QSize naturalSize() const { return naturalSize_; }
    /// Needs a tray.
    void dock(const TrayWatch& tray);

  signals:
    /// The tray has let go of it or is gone.
    void undocked();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    QSize naturalSize_;
    xcb_window_t id_ = 0;
    bool embedded_ = false;
};

} // namespace orrivane::desktop
