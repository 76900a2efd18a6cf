#pragma once

#include <desktop/support/Theme.h>

#include <optional>

#include <QWidget>

namespace orrivane::desktop {

/// The upper edge of a window: buttons that close and enlarge it, its title, and a place to take
/// hold of it.
class WindowTitle final : public QWidget {
    Q_OBJECT

  public:
    static constexpr double points = 40; ///< how high it is

    WindowTitle(const Theme& theme, QWidget* window);

    /// Where the title stands: points from the left.
    void setTitleLeft(double left) { titleLeft_ = left; }

  private:
    enum class Button { none, close, enlarge };

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    QRectF place(Button button) const;
    Button buttonAt(QPointF point) const;
    void paintButton(QPainter& painter, Button button) const;
    void setHovered(Button button);
    void toggleSize();

    Theme theme_;
    double titleLeft_ = 72;
    Button hovered_ = Button::none;
    Button pressed_ = Button::none;
    std::optional<QPointF> grip_; // where the title was taken hold of
};

} // namespace orrivane::desktop
