#include <linux/qt/QtPopover.h>

#include <linux/qt/QtStatusBar.h>
#include <linux/qt/view/ScreenView.h>

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orrivane {

class QtPopover::Window : public QWidget {
  public:
    Window(WatchPresses watchPresses, std::function<bool()> isDragging)
        : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint)
        , watchPresses_(std::move(watchPresses))
        , isDragging_(std::move(isDragging)) {
        setWindowTitle(QStringLiteral("Orrivane"));
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(1, 1, 1, 1);
        layout->addWidget(screen = new ScreenView);
        auto* quit = new QShortcut(QKeySequence::Quit, this);
        QObject::connect(quit, &QShortcut::activated, [] { QCoreApplication::quit(); });
        auto* close = new QShortcut(QKeySequence::Close, this);
        QObject::connect(close, &QShortcut::activated, this, &QWidget::hide);
        deactivated_.setSingleShot(true);
        QObject::connect(&deactivated_, &QTimer::timeout, this, [this] { closeUnlessOurs(); });
    }

    ScreenView* screen;
    QSize wanted{980, 640};
    QRect anchor; // a click there closes the popover by itself

  protected:
    bool event(QEvent* event) override {
        // Which window has the keyboard instead is known a turn later.
        if (event->type() == QEvent::WindowDeactivate)
            deactivated_.start(0);
        return QWidget::event(event);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape)
            hide();
        else
            QWidget::keyPressEvent(event);
    }
    void showEvent(QShowEvent* event) override {
        QWidget::showEvent(event);
        screen->setShown(true);
        if (watchPresses_)
            presses_ = watchPresses_([this] { closeIfPressedOutside(); });
    }
    void hideEvent(QHideEvent* event) override {
        QWidget::hideEvent(event);
        // Hiding takes the keyboard away too; that must not close a popover shown again at once.
        deactivated_.stop();
        lostToADrag_ = false;
        presses_.reset();
        screen->setShown(false);
    }
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        auto border = palette().color(QPalette::WindowText);
        border.setAlphaF(0.25F);
        painter.setPen(border);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

  private:
    // The icon opens and closes it by itself, and the tray beside the notch leaves it open.
    void closeIfPressedOutside() {
        const auto place = QCursor::pos();
        if (isVisible() && !isDragging_() && !QApplication::activeModalWidget() &&
            !anchor.contains(place) && !QApplication::topLevelAt(place))
            hide();
    }

    void closeUnlessOurs() {
        constexpr int untilItIsOver = 50; // milliseconds between two looks
        if (isVisible() && isDragging_()) {
            lostToADrag_ = true;
            deactivated_.start(untilItIsOver);
            return;
        }
        // The program's own drag has taken the keyboard, so it gives it back.
        if (std::exchange(lostToADrag_, false) && isVisible()) {
            activateWindow();
            return;
        }
        if (!isVisible() || isActiveWindow() || QApplication::activeModalWidget() ||
            anchor.contains(QCursor::pos()) || QGuiApplication::mouseButtons() != Qt::NoButton)
            return;
        const auto* active = QApplication::activeWindow();
        for (const QWidget* window = active; window; window = window->parentWidget())
            if (window == this)
                return;
        hide();
    }

    WatchPresses watchPresses_;
    std::function<bool()> isDragging_;
    Subscription presses_;
    QTimer deactivated_;
    bool lostToADrag_ = false;
};

QtPopover::QtPopover(WatchPresses watchPresses, std::function<bool()> isDragging)
    : window_(std::make_unique<Window>(std::move(watchPresses), std::move(isDragging))) {}
QtPopover::~QtPopover() = default;

QWidget* QtPopover::widget() const {
    return window_.get();
}

void QtPopover::setRoot(const View& root) {
    window_->screen->setRoot(root);
}

void QtPopover::setContentSize(Size size) {
    window_->wanted = QSize(qRound(size.width), qRound(size.height));
}

bool QtPopover::isShown() {
    return window_->isVisible();
}

void QtPopover::performClose() {
    window_->hide();
}

void QtPopover::show(StatusItem& below) {
    const auto* item = dynamic_cast<const QtStatusItem*>(&below);
    const auto place = item ? item->place() : std::nullopt;
    window_->anchor = place.value_or(QRect());
    // A tray over D-Bus does not tell; the click that led here was made with the pointer.
    const QRect anchor = place.value_or(QRect(QCursor::pos(), QSize(1, 1)));
    const auto* screen = QGuiApplication::screenAt(anchor.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    window_->setGeometry(popoverPlace(window_->wanted, anchor, screen->availableGeometry()));
    window_->show();
    window_->raise();
    window_->activateWindow();
}

QRect popoverPlace(QSize size, const QRect& anchor, const QRect& available) {
    constexpr int margin = 8;
    const auto room = available.marginsRemoved({margin, 0, margin, margin});
    size = size.boundedTo(room.size());
    const bool below = anchor.center().y() < available.center().y();
    const int top = below ? anchor.bottom() + 1 : anchor.top() - size.height();
    const int left = anchor.center().x() - size.width() / 2;
    return {QPoint(std::clamp(left, room.left(), room.right() + 1 - size.width()),
                   std::clamp(top, room.top(), room.bottom() + 1 - size.height())),
            size};
}

} // namespace orrivane
