#pragma once

#include <Orrivane/view/Tile.h>

#include <QPoint>
#include <QWidget>

#include <memory>
#include <optional>

namespace orrivane {

/// A tile that the user drags with the pointer and drops others on; or, where it has the keyboard,
/// takes along with the arrow keys while Alt or Ctrl is held, and drops by letting go.
class TileWidget : public QWidget {
  public:
    TileWidget();
    ~TileWidget() override;

    void set(const Tile& tile);
    /// A whole drag by one place to the left (-1) or right (1), dropped at once.
    void moveBy(int direction);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void drag();
    void letGo(bool drops);

    // Shared with a drag under way, which may outlive the tile.
    std::shared_ptr<Tile> tile_;
    std::optional<QPoint> press_;
    bool isCarried_ = false; // by the keyboard
};

} // namespace orrivane
