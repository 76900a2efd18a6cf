#include <linux/qt/view/TileWidget.h>

#include <linux/qt/view/DrawnWidget.h>
#include <linux/qt/view/FocusRing.h>

#include <QAccessibleWidget>
#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollArea>

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

constexpr auto heldKeys =
    Qt::AltModifier | Qt::ControlModifier | Qt::ShiftModifier | Qt::MetaModifier;

/// An item of a row that assistive programs can move too.
class TileAccessible : public QAccessibleWidget {
  public:
    explicit TileAccessible(TileWidget& tile)
        : QAccessibleWidget(&tile, QAccessible::ListItem) {}

    [[nodiscard]] QStringList actionNames() const override {
        auto names = QAccessibleWidget::actionNames();
        if (widget()->isEnabled())
            names << moveLeft() << moveRight();
        return names;
    }
    void doAction(const QString& name) override {
        auto& tile = static_cast<TileWidget&>(*widget());
        if (name != moveLeft() && name != moveRight())
            QAccessibleWidget::doAction(name);
        else if (tile.isEnabled())
            tile.moveBy(name == moveLeft() ? -1 : 1);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& name) const override {
        if (name == moveLeft())
            return {QStringLiteral("Alt+Left"), QStringLiteral("Ctrl+Left")};
        if (name == moveRight())
            return {QStringLiteral("Alt+Right"), QStringLiteral("Ctrl+Right")};
        return QAccessibleWidget::keyBindingsForAction(name);
    }

  private:
    static QString moveLeft() { return QStringLiteral("Move Left"); }
    static QString moveRight() { return QStringLiteral("Move Right"); }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* tile = dynamic_cast<TileWidget*>(object);
    return tile ? new TileAccessible(*tile) : nullptr;
}

} // namespace

TileWidget::TileWidget()
    : tile_(std::make_shared<Tile>()) {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    setAcceptDrops(true);
    setCursor(Qt::OpenHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleDescription(
        QStringLiteral("Hold Alt and press Left or Right to move it, then release Alt"));
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
    // The row's ground and the highlight are of the same lightness.
    if (hasFocus())
        paintFocusRing(*this, QPalette::WindowText);
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
    auto* gesture = new QDrag(window()); // the toolkit does not bear its end before the drag's
    gesture->setMimeData(payload);
    gesture->setPixmap(grab());
    gesture->setHotSpot(start);
    run(tile->source.began);
    gesture->exec(Qt::MoveAction); // this tile may be gone after it
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

void TileWidget::keyPressEvent(QKeyEvent* event) {
    const auto held = event->modifiers() & heldKeys;
    const bool sideways = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    if (sideways && (held == Qt::AltModifier || held == Qt::ControlModifier)) {
        isCarried_ = true;
        run(tile_->stepped, event->key() == Qt::Key_Left ? -1 : 1);
    } else if (isCarried_ && event->key() == Qt::Key_Escape) {
        letGo(false);
    } else {
        QWidget::keyPressEvent(event);
    }
}

// The simulated drag holds a key of its own, with which the user's must not come together.
void TileWidget::keyReleaseEvent(QKeyEvent* event) {
    if (isCarried_ && (event->modifiers() & heldKeys) == 0)
        letGo(true);
    else
        QWidget::keyReleaseEvent(event);
}

void TileWidget::letGo(bool drops) {
    if (!std::exchange(isCarried_, false))
        return;
    const auto tile = tile_;
    if (drops)
        run(tile->target.performed);
    run(tile->source.ended);
}

void TileWidget::moveBy(int direction) {
    isCarried_ = true;
    run(tile_->stepped, direction);
    letGo(true);
}

void TileWidget::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    // The toolkit scrolls only those areas that the keyboard was in before.
    if (event->reason() != Qt::MouseFocusReason)
        for (auto* each = parentWidget(); each; each = each->parentWidget())
            if (auto* area = qobject_cast<QScrollArea*>(each))
                area->ensureWidgetVisible(this);
}

void TileWidget::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    letGo(false);
}

void TileWidget::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    letGo(false);
}

} // namespace orrivane
