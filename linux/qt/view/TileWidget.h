#pragma once

#include <Orrivane/view/Tile.h>

#include <QPoint>
#include <QWidget>

#include <memory>
#include <optional>

namespace orrivane {

/// A tile that the user drags with the pointer and drops others on.
class TileWidget : public QWidget {
  public:
    TileWidget();
    ~TileWidget() override;

    void set(const Tile& tile);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void drag();

    // Shared with a drag under way, which may outlive the tile.
    std::shared_ptr<Tile> tile_;
    std::optional<QPoint> press_;
};

} // namespace orrivane
