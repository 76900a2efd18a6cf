#include <linux/qt/QtMainWindow.h>

#include <linux/qt/ScreenPoints.h>
#include <linux/qt/view/ScreenView.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include <xcb/xcb.h>

namespace orrivane {

class QtMainWindow::Window : public QWidget {
  public:
    Window() {
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(screen = new ScreenView);
        auto* close = new QShortcut(QKeySequence::Close, this);
        QObject::connect(close, &QShortcut::activated, this, &QWidget::close);
        auto* quit = new QShortcut(QKeySequence::Quit, this);
        QObject::connect(quit, &QShortcut::activated, [] { QCoreApplication::quit(); });
    }

    ScreenView* screen;

  protected:
    void showEvent(QShowEvent* event) override {
        QWidget::showEvent(event);
        screen->setShown(true);
    }
};

QtMainWindow::QtMainWindow() = default;
QtMainWindow::~QtMainWindow() = default;

QWidget* QtMainWindow::widget() const {
    return window_.get();
}

void QtMainWindow::create(const MainWindowConfiguration& configuration) {
    window_ = std::make_unique<Window>();
    window_->setWindowTitle(QString::fromStdString(configuration.title));
    window_->resize(qRound(configuration.contentSize.width),
                    qRound(configuration.contentSize.height));
    window_->setMinimumSize(qRound(configuration.minimumContentSize.width),
                            qRound(configuration.minimumContentSize.height));
    window_->winId(); // the frame's place is asked for before the window is shown
    keepOutOfTaskBars();
}

// The toolkit keeps states that it does not know when it maps the window.
void QtMainWindow::keepOutOfTaskBars() {
    auto* native = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!native)
        return;
    auto* connection = native->connection();
    const auto atom = [connection](std::string_view name) {
        auto* reply = xcb_intern_atom_reply(
            connection,
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr);
        const xcb_atom_t result = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);
        return result;
    };
    const auto state = atom("_NET_WM_STATE_SKIP_TASKBAR");
    xcb_change_property(connection, XCB_PROP_MODE_APPEND,
                        static_cast<xcb_window_t>(window_->winId()), atom("_NET_WM_STATE"),
                        XCB_ATOM_ATOM, 32, 1, &state);
}

void QtMainWindow::setRoot(const View& root) {
    window_->screen->setRoot(root);
}

bool QtMainWindow::isVisible() {
    return window_ && window_->isVisible() && !window_->isMinimized();
}

void QtMainWindow::makeKeyAndOrderFront() {
    if (window_->isMinimized())
        window_->showNormal();
    window_->show();
    activate();
}

void QtMainWindow::activate() {
    if (!isVisible())
        return;
    window_->raise();
    window_->activateWindow();
}

void QtMainWindow::setIcon(const QIcon& icon) {
    if (window_)
        window_->setWindowIcon(icon);
}

void QtMainWindow::setFrameTopLeft(Point topLeft) {
    // The widget's own move takes a window that is not shown yet for one without a frame.
    window_->windowHandle()->setFramePosition(fromPoints({topLeft, {0, 0}}).topLeft());
}

void QtMainWindow::center() {
    const auto* screen = window_->QWidget::screen();
    if (screen)
        window_->move(screen->availableGeometry().center() - window_->rect().center());
}

Rect QtMainWindow::frame() {
    return toPoints(window_->frameGeometry());
}

Rect QtMainWindow::contentRect(const Rect& frame) {
    const auto margins = window_->windowHandle()->frameMargins();
    return {{frame.origin.x + margins.left(), frame.origin.y + margins.bottom()},
            {frame.size.width - margins.left() - margins.right(),
             frame.size.height - margins.top() - margins.bottom()}};
}

Rect QtMainWindow::frameRect(const Rect& content) {
    const auto margins = window_->windowHandle()->frameMargins();
    return {{content.origin.x - margins.left(), content.origin.y - margins.bottom()},
            {content.size.width + margins.left() + margins.right(),
             content.size.height + margins.top() + margins.bottom()}};
}

void QtMainWindow::setFrame(const Rect& frame) {
    const auto content = contentRect(frame);
    const auto before = this->frame();
    resizeContent({qRound(content.width()), qRound(content.height())});
    if (before.minX() != frame.minX() || before.maxY() != frame.maxY())
        setFrameTopLeft({frame.minX(), frame.maxY()});
}

// The toolkit sends a size with a place, and around the first showing that place is not the one the
// window manager has chosen. The size alone leaves the corner where it is.
void QtMainWindow::resizeContent(const QSize& size) {
    auto* native = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!native || !window_->isVisible())
        return window_->resize(size);
    const auto pixels = (QSizeF(size) * window_->devicePixelRatioF()).toSize();
    const std::uint32_t values[]{static_cast<std::uint32_t>(std::max(1, pixels.width())),
                                 static_cast<std::uint32_t>(std::max(1, pixels.height()))};
    xcb_configure_window(native->connection(), static_cast<xcb_window_t>(window_->winId()),
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    xcb_flush(native->connection());
}

std::optional<Rect> QtMainWindow::visibleFrameOfScreen() {
    const auto* screen = window_ ? window_->QWidget::screen() : nullptr;
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return std::nullopt;
    return toPoints(screen->availableGeometry());
}

double QtMainWindow::naturalContentHeight() {
    return window_->screen->naturalHeight();
}

} // namespace orrivane
