#pragma once

#include <linux/qt/StripLayout.h>
#include <linux/qt/StripSurface.h>

#include <Orrivane/view/Drawing.h>

#include <QImage>
#include <QRegion>
#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {

/// A button of the strip. `pixels` counts device pixels from the widget's top left.
struct StripCell {
    CellId id;
    std::string tooltip;
    std::string accessibleName;
    Drawing label;
    QRect pixels;
    std::function<void()> action;
    std::function<void()> secondaryAction;
};

/// What lies under the cells.
struct StripBackdrop {
    bool blended = false; ///< nothing: the compositor shows what is behind
    QImage pixels;        ///< else this, opaque; null: the palette's window colour
};

/// The window of the tray: draws cells and hears the mouse, in device pixels throughout, whatever
/// the toolkit makes of the window's size. Geometry and stacking are the caller's.
class StripWidget : public QWidget {
  public:
    StripWidget();
    ~StripWidget() override;

    /// Creates the native window if need be. False while the server does not know it for sure.
    bool connectToServer();
    /// Whether the window can be seen through.
    [[nodiscard]] bool canBlend() const { return surface_.canBlend(); }

    /// Newest actions count at once; pixels change with the next flush and where they differ only.
    void setCells(std::vector<StripCell> cells, const QSize& pixels);
    void setBackdrop(StripBackdrop backdrop);
    /// Brings the picture up to date. Happens on its own on the next turn of the loop.
    void flush();
    /// The whole picture in device pixels, up to date.
    const QImage& picture();

    [[nodiscard]] const std::vector<StripCell>& cells() const { return cells_; }
    [[nodiscard]] const StripCell* cell(const CellId& id) const;
    [[nodiscard]] const StripCell* cellAt(const QPointF& position) const;
    /// A cell's place in the toolkit's coordinates of this widget.
    [[nodiscard]] QRect toolkitRect(const QRect& pixels) const;
    /// Runs the cell's action on a later turn, if the cell is still there by then.
    void activate(const CellId& id, Qt::MouseButton button);

    QPaintEngine* paintEngine() const override { return nullptr; }

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    struct Press {
        CellId id;
        Qt::MouseButton button;
    };

    void markDirty(const QRegion& region);
    void markDifferences(const std::vector<StripCell>& before, bool resized);
    void compose(const QRegion& region);
    void showTooltip(const CellId& id, const QPoint& globalPosition);
    void refreshTooltip();

    StripSurface surface_;
    std::vector<StripCell> cells_;
    StripBackdrop backdrop_;
    QImage picture_;
    QRegion dirty_;
    bool flushScheduled_ = false;
    std::optional<Press> press_;
    struct Tooltip {
        CellId id;
        QString text;
        QPoint globalPosition;
    };
    std::optional<Tooltip> tooltip_;
};

} // namespace orrivane
