#include <linux/qt/view/TileWidget.h>

#include <linux/qt/view/DrawnWidget.h>

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>

namespace orrivane {

namespace {

// A copy: what runs may replace the tile.
template <typename Action, typename... Arguments>
auto run(Action action, Arguments... arguments) {
    using Result = decltype(action.run(arguments...));
    if (!action.run)
        return Result();
    return action.run(arguments...);
}

} // namespace

TileWidget::TileWidget()
    : tile_(std::make_shared<Tile>()) {
    setAcceptDrops(true);
    setCursor(Qt::OpenHandCursor);
}

TileWidget::~TileWidget() = default;

void TileWidget::set(const Tile& tile) {
    const bool differs = tile_->content != tile.content;
    *tile_ = tile;
    setFixedSize(qRound(tile.content.size.width), qRound(tile.content.size.height));
    if (differs)
        update();
}

void TileWidget::paintEvent(QPaintEvent*) {
    paintDrawing(*this, tile_->content);
}

void TileWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        press_ = event->pos();
}

void TileWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!press_ || !(event->buttons() & Qt::LeftButton) ||
        (event->pos() - *press_).manhattanLength() < QApplication::startDragDistance())
        return;
    drag();
}

void TileWidget::drag() {
    const auto tile = tile_;
    const auto start = *std::exchange(press_, std::nullopt);
    auto* payload = new QMimeData;
    payload->setText(QString::fromStdString(tile->source.payload));
    auto* gesture = new QDrag(this);
    gesture->setMimeData(payload);
    gesture->setPixmap(grab());
    gesture->setHotSpot(start);
    run(tile->source.began);
    gesture->exec(Qt::MoveAction); // the tile may be gone after it
    run(tile->source.ended);
}

void TileWidget::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasText())
        event->acceptProposedAction();
}

void TileWidget::dragMoveEvent(QDragMoveEvent* event) {
    run(tile_->target.updated, event->position().x());
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

void TileWidget::dragLeaveEvent(QDragLeaveEvent*) {
    run(tile_->target.exited);
}

void TileWidget::dropEvent(QDropEvent* event) {
    event->setDropAction(Qt::MoveAction);
    event->setAccepted(run(tile_->target.performed));
}

} // namespace orrivane
