#include <desktop/support/TrayWatch.h>

#include <QCoreApplication>

namespace orrivane::desktop {

namespace {

constexpr std::uint32_t requestDockOpcode = 0;

// A 32-bit property carries signed values as their bits.
int signedValue(std::uint32_t bits) {
    return static_cast<int>(bits);
}

} // namespace

TrayWatch::TrayWatch(const BarLook& look)
    : selection_(xserver::atom("_NET_SYSTEM_TRAY_S0"))
    , manager_(xserver::atom("MANAGER"))
    , colors_(xserver::atom("_ORRIVANE_BAR_COLORS"))
    , metrics_(xserver::atom("_ORRIVANE_ITEM_METRICS"))
    , fallback_(look)
    , look_(look) {
    xserver::listen(xserver::root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    QCoreApplication::instance()->installNativeEventFilter(this);
    lookUp();
}

TrayWatch::~TrayWatch() {
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

xcb_window_t TrayWatch::currentOwner() const {
    auto* connection = xserver::connection();
    const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, selection_), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void TrayWatch::lookUp() {
    xcb_window_t owner = currentOwner();
    if (owner == owner_ && !lost_)
        return;
    lost_ = false;
    // An owner that died before it could be listened to is none: its successor announces itself.
    if (owner != 0 &&
        !xserver::listen(owner, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE))
        owner = 0;
    owner_ = owner;
    readLook();
    emit trayChanged();
}

// Whoever hears of another tray makes and removes event filters, which must not happen in one.
void TrayWatch::lookUpLater() {
    QMetaObject::invokeMethod(this, &TrayWatch::lookUp, Qt::QueuedConnection);
}

void TrayWatch::readLook() {
    look_ = fallback_;
    if (owner_ == 0)
        return;
    if (const auto colors = xserver::cardinals(owner_, "_ORRIVANE_BAR_COLORS");
        colors && colors->size() >= 2) {
        look_.background = QColor::fromRgb((*colors)[0]);
        look_.foreground = QColor::fromRgb((*colors)[1]);
    }
    if (const auto metrics = xserver::cardinals(owner_, "_ORRIVANE_ITEM_METRICS");
        metrics && metrics->size() >= 2) {
        look_.spacing = signedValue((*metrics)[0]);
        look_.selectionPadding = signedValue((*metrics)[1]);
    }
}

void TrayWatch::requestDock(xcb_window_t window) const {
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = owner_;
    request.type = xserver::atom("_NET_SYSTEM_TRAY_OPCODE");
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = requestDockOpcode;
    request.data.data32[2] = window;
    xcb_send_event(xserver::connection(), 0, owner_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&request));
    xcb_flush(xserver::connection());
}

bool TrayWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7f) {
    case XCB_DESTROY_NOTIFY: {
        const auto* gone = reinterpret_cast<const xcb_destroy_notify_event_t*>(event);
        if (owner_ != 0 && gone->window == owner_) {
            // The next tray's window may get the same number.
            owner_ = 0;
            lost_ = true;
            lookUpLater();
        }
        break;
    }
    case XCB_CLIENT_MESSAGE: {
        const auto* said = reinterpret_cast<const xcb_client_message_event_t*>(event);
        // The owner known already is not new: had it died, its end would have been told before.
        if (said->type == manager_ && said->data.data32[1] == selection_ &&
            said->data.data32[2] != owner_)
            lookUpLater();
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto* changed = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (owner_ != 0 && changed->window == owner_ &&
            (changed->atom == colors_ || changed->atom == metrics_)) {
            readLook();
            emit lookChanged();
        }
        break;
    }
    default:
        break;
    }
    return false;
}

} // namespace orrivane::desktop
