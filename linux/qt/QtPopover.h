#pragma once

#include <Orrivane/platform/Popover.h>
#include <Orrivane/support/Subscription.h>

#include <QPointer>
#include <QRect>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

namespace orrivane {

class ScreenView;

/// A frameless window under the own icon. It closes when another window takes the keyboard, by a
/// press outside the program's windows, by Escape, and by a second click on the icon; a question it
/// asks, a drag that begins in it, and a drag that the program makes itself do not close it.
class QtPopover : public Popover {
  public:
    /// Begins to tell of presses of mouse buttons anywhere, until the handle dies.
    using WatchPresses = std::function<Subscription(std::function<void()> pressed)>;

    /// Without `watchPresses`, presses where nothing takes the keyboard leave it open. `isDragging`
    /// says whether the program itself drags something on the screen.
    explicit QtPopover(
        WatchPresses watchPresses = nullptr,
        std::function<bool()> isDragging = [] { return false; });
    ~QtPopover() override;

    void setRoot(const View& root) override;
    void setContentSize(Size size) override;
    [[nodiscard]] bool isShown() override;
    void show(StatusItem& below) override;
    void performClose() override;

    [[nodiscard]] QWidget* widget() const;

  private:
    class Window;

    std::unique_ptr<Window> window_;
};

/// Where a popover of `size` stands: centred below `anchor` (above it in the lower half of the
/// screen), wholly on the screen's `available` area and never larger than it. Toolkit coordinates.
QRect popoverPlace(QSize size, const QRect& anchor, const QRect& available);

} // namespace orrivane
