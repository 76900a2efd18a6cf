#include <desktop/support/TrayWindow.h>

#include <QCoreApplication>

namespace orrivane::desktop {

namespace {

// Where nobody sees it before the tray has taken it.
constexpr QPoint offScreen{-4000, -4000};

} // namespace

TrayWindow::TrayWindow(const Identity& identity, QSize naturalSize)
    : naturalSize_(naturalSize) {
    // Left alone by the window manager, also when a dying tray drops it onto the root window.
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    setAttribute(Qt::WA_NativeWindow);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setWindowTitle(identity.title);
    setMinimumSize(naturalSize);
    setBaseSize(naturalSize);
    // Without a step the toolkit keeps the base size to itself.
    setSizeIncrement(1, 1);
    setGeometry(QRect(offScreen, naturalSize));
    id_ = static_cast<xcb_window_t>(winId());
    std::string classes = identity.instanceName;
    classes += '\0';
    classes += identity.className;
    classes += '\0';
    xserver::setText(id_, "WM_CLASS", XCB_ATOM_STRING, classes);
    if (identity.title.isEmpty()) {
        // The toolkit would name it after the program.
        xserver::setText(id_, "WM_NAME", XCB_ATOM_STRING, "");
        xserver::setText(id_, "_NET_WM_NAME", xserver::atom("UTF8_STRING"), "");
    }
    QCoreApplication::instance()->installNativeEventFilter(this);
}

TrayWindow::~TrayWindow() {
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

void TrayWindow::dock(const TrayWatch& tray) {
    // The toolkit shall believe the window shown from now on: what is shown later would be sized
    // anew, against the tray's wish. The tray gets it unmapped all the same, as GTK's sockets
    // forget the size of what comes to them mapped.
    show();
    xcb_unmap_window(xserver::connection(), id_);
    tray.requestDock(id_);
}

// The tray sizes it while it is unmapped, and of that alone the toolkit draws nothing anew.
void TrayWindow::resizeEvent(QResizeEvent*) {
    update();
}

bool TrayWindow::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const auto type = event->response_type & 0x7f;
    if (type == XCB_REPARENT_NOTIFY) {
        const auto* moved = reinterpret_cast<const xcb_reparent_notify_event_t*>(event);
        if (moved->event != id_ || moved->window != id_)
            return false;
        const bool wasEmbedded = embedded_;
        embedded_ = moved->parent != xserver::root();
        if (wasEmbedded && !embedded_)
            emit undocked();
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto* gone = reinterpret_cast<const xcb_destroy_notify_event_t*>(event);
        if (gone->event == id_ && gone->window == id_)
            emit undocked();
    }
    return false;
}

} // namespace orrivane::desktop
