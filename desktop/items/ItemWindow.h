#pragma once

#include <desktop/items/StatusKind.h>
#include <desktop/support/Theme.h>
#include <desktop/support/TrayWindow.h>

namespace orrivane::desktop {

/// One icon in the tray. What it was made with outlives it.
class ItemWindow final : public TrayWindow {
    Q_OBJECT

  public:
    ItemWindow(const StatusKind& kind, std::size_t part, const ItemState& state,
               const TrayWatch& tray, const Theme& theme);

    void setHighlighted(bool highlighted);
    /// Where its menu begins: the lower left corner of its highlight, on the root window. Absent
    /// when the window is gone.
    std::optional<QPoint> menuCorner() const;

  signals:
    void pressed();

  private:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    QRect highlight() const;

    const StatusKind& kind_;
    const StatusKind::Part& part_;
    const ItemState& state_;
    const TrayWatch& tray_;
    const Theme& theme_;
    bool highlighted_ = false;
};

} // namespace orrivane::desktop
