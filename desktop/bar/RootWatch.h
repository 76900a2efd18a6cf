#pragma once

#include <desktop/support/XServer.h>

#include <vector>

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QRect>

namespace orrivane::desktop {

/// What happens on the root window that concerns the bar.
class RootWatch final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    RootWatch();
    ~RootWatch() override;

    /// The server's monitors, the primary one first; never empty.
    [[nodiscard]] static std::vector<QRect> monitors();

  signals:
    void propertyChanged(xcb_atom_t property);
    /// The root window or the monitors on it have another shape.
    void screenChanged();

  private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    xcb_window_t root_;
};

} // namespace orrivane::desktop
