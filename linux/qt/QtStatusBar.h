#pragma once

#include <Orrivane/platform/StatusBar.h>
#include <Orrivane/view/Drawing.h>

#include <QColor>
#include <QIcon>
#include <QRect>
#include <QSystemTrayIcon>

#include <functional>
#include <memory>
#include <optional>

namespace orrivane {

/// How a tray wants icons to look.
struct StatusIconLook {
    std::optional<QColor> ink; ///< absent: as the toolkit writes text
    double fill = 1;           ///< part of the cell's side that the figure takes
};

/// The own icon in whatever tray the desktop has. Trays show no text, so a title becomes a dot on
/// the icon.
class QtStatusItem : public StatusItem {
  public:
    using Look = std::function<StatusIconLook()>;

    /// `look` is asked again whenever the icon is drawn.
    explicit QtStatusItem(Look look);

    [[nodiscard]] bool hasButton() const override { return true; }
    void setImage(const Drawing& image) override;
    void setAction(std::function<void()> action) override { action_ = std::move(action); }
    void setImagePosition(int) override {}
    void setTitle(const std::string& title) override;
    void setToolTip(const std::optional<std::string>& toolTip) override;

    /// Where the icon stands, in toolkit coordinates; absent where the tray does not tell.
    [[nodiscard]] std::optional<QRect> place() const;

  private:
    void show();

    Look look_;
    QSystemTrayIcon icon_;
    Drawing image_;
    bool badge_ = false;
    std::function<void()> action_;
};

class QtStatusBar : public StatusBar {
  public:
    explicit QtStatusBar(QtStatusItem::Look look)
        : look_(std::move(look)) {}

    [[nodiscard]] std::unique_ptr<StatusItem> createItem(double length) override;

  private:
    QtStatusItem::Look look_;
};

/// A drawing as an icon in every size that trays and window lists use, its template coloured with
/// `ink`; with a dot at the upper right if `badge`. The figure takes the part `fill` of the side.
QIcon drawnIcon(const Drawing& drawing, const QColor& ink, bool badge, double fill = 1);

} // namespace orrivane
