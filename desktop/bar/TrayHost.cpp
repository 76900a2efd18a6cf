#include <desktop/bar/TrayHost.h>

#include <algorithm>

namespace orrivane::desktop {

namespace {

constexpr std::uint32_t requestDock = 0;
constexpr std::uint32_t horizontal = 0;
constexpr int retryInterval = 50; // milliseconds

std::uint32_t rgb(const QColor& color) {
    return color.rgb() & 0xffffffU;
}

void append(std::vector<std::uint32_t>& values, const QColor& color) {
    for (const int channel : {color.red(), color.green(), color.blue()})
        values.push_back(static_cast<std::uint32_t>(channel * 0x101));
}

} // namespace

TrayHost::TrayHost(std::unique_ptr<TrayWire> wire, xcb_window_t dock, const Settings& settings,
                   OrderFile orderFile)
    : wire_(std::move(wire))
    , settings_(settings)
    , orderFile_(std::move(orderFile))
    , keptOrder_(orderFile_.read())
    , row_(settings.spacingPixels) {
    row_.remember(keptOrder_);
    makeTray(dock);
    publish();
    drag_ = std::make_unique<CommandDrag>(*wire_, tray_, row_);
    arrivals_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(wire_->raw()),
                                                  QSocketNotifier::Read);
    connect(arrivals_.get(), &QSocketNotifier::activated, this, &TrayHost::drain);
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, [this] {
        askForTime();
        drain();
    });
    askForTime();
    drainSoon();
}

TrayHost::~TrayHost() = default;

void TrayHost::makeTray(xcb_window_t dock) {
    tray_ = xcb_generate_id(wire_->raw());
    const std::uint32_t values[] = {rgb(settings_.background),
                                    XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY |
                                        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT |
                                        XCB_EVENT_MASK_PROPERTY_CHANGE | CommandDrag::trayEvents};
    xcb_create_window(wire_->raw(), XCB_COPY_FROM_PARENT, tray_, dock, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(wire_->raw(), tray_, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    xcb_map_window(wire_->raw(), tray_);
    const std::uint32_t stacking = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(wire_->raw(), wire_->root(), XCB_CW_EVENT_MASK, &stacking);
}

void TrayHost::publish() const {
    wire_->setCardinals(tray_, TrayAtom::orientation, {horizontal});
    std::vector<std::uint32_t> inks;
    append(inks, settings_.foreground);
    append(inks, QColor(0xd93a3f)); // error
    append(inks, QColor(0xc98a00)); // warning
    append(inks, QColor(0x2d9d57)); // success
    wire_->setCardinals(tray_, TrayAtom::trayColors, inks);
    wire_->setCardinals(tray_, TrayAtom::barColors,
                        {rgb(settings_.background), rgb(settings_.foreground)});
    wire_->setCardinals(tray_, TrayAtom::itemMetrics,
                        {static_cast<std::uint32_t>(settings_.spacing),
                         static_cast<std::uint32_t>(settings_.selectionPadding)});
}

void TrayHost::setPlace(const QRect& inDock, QPoint onRoot) {
    place_ = inDock;
    onRoot_ = onRoot;
    const std::uint32_t values[] = {static_cast<std::uint32_t>(inDock.x()),
                                    static_cast<std::uint32_t>(inDock.y()),
                                    static_cast<std::uint32_t>(std::max(1, inDock.width())),
                                    static_cast<std::uint32_t>(std::max(1, inDock.height()))};
    wire_->ignore(xcb_configure_window_checked(wire_->raw(), tray_,
                                               XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y |
                                                   XCB_CONFIG_WINDOW_WIDTH |
                                                   XCB_CONFIG_WINDOW_HEIGHT,
                                               values));
    row_.setRightEnd(inDock.width());
    arrange();
    drainSoon();
}

void TrayHost::drain() {
    for (;;) {
        Owned<xcb_generic_event_t> event(xcb_poll_for_event(wire_->raw()));
        if (!event) {
            // Questions and writing read too; what they put into the queue, no notifier tells of.
            xcb_flush(wire_->raw());
            event.reset(xcb_poll_for_queued_event(wire_->raw()));
        }
        if (!event)
            break;
        handle(*event);
        drag_->settle();
    }
    if (xcb_connection_has_error(wire_->raw()) != 0)
        giveUp(QStringLiteral("the X server has gone"));
}

void TrayHost::drainSoon() {
    QMetaObject::invokeMethod(this, &TrayHost::drain, Qt::QueuedConnection);
}

void TrayHost::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE: {
        const auto& said = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (said.type == wire_->atom(TrayAtom::trayOpcode) && said.format == 32 &&
            said.data.data32[1] == requestDock)
            dock(said.data.data32[2]);
        break;
    }
    case XCB_CONFIGURE_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_DESTROY_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
        // All of them begin with the window that was listened to: the tray or the root window.
        if (reinterpret_cast<const xcb_map_notify_event_t&>(event).event == tray_)
            handleTray(event);
        else
            emit stackingChanged();
        break;
    case XCB_MAP_REQUEST:
        setMapped(reinterpret_cast<const xcb_map_request_event_t&>(event).window, true);
        break;
    case XCB_CONFIGURE_REQUEST:
        answerConfigure(reinterpret_cast<const xcb_configure_request_event_t&>(event));
        break;
    case XCB_PROPERTY_NOTIFY:
        handleProperty(reinterpret_cast<const xcb_property_notify_event_t&>(event));
        break;
    case XCB_SELECTION_CLEAR:
        giveUp(QStringLiteral("another system tray has taken over"));
        break;
    default:
        if (const auto outcome = drag_->handle(event); outcome != CommandDrag::Outcome::ignored) {
            arrange();
            if (outcome != CommandDrag::Outcome::moved)
                keepOrder();
        }
    }
}

void TrayHost::handleTray(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    const auto window = reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
    if (type == XCB_DESTROY_NOTIFY ||
        (type == XCB_REPARENT_NOTIFY &&
         reinterpret_cast<const xcb_reparent_notify_event_t&>(event).parent != tray_)) {
        forget(window);
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        putBack(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
    } else if (type == XCB_MAP_NOTIFY || type == XCB_UNMAP_NOTIFY) {
        row_.setShown(window, type == XCB_MAP_NOTIFY);
        arrange();
    }
}

void TrayHost::handleProperty(const xcb_property_notify_event_t& changed) {
    if (changed.window == tray_ && !owning_)
        takeSelection(changed.time);
    else if (changed.atom == XCB_ATOM_WM_NORMAL_HINTS ||
             changed.atom == wire_->atom(TrayAtom::xembedInfo))
        readAgain(changed.window, changed.atom);
}

// Owning a selection needs the server's time, which only an event tells.
void TrayHost::askForTime() const {
    xcb_change_property(wire_->raw(), XCB_PROP_MODE_APPEND, tray_,
                        wire_->atom(TrayAtom::orientation), XCB_ATOM_CARDINAL, 32, 0, nullptr);
}

void TrayHost::takeSelection(xcb_timestamp_t time) {
    const auto selection = wire_->atom(TrayAtom::traySelection);
    const auto owner = [&] {
        const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
            wire_->raw(), xcb_get_selection_owner(wire_->raw(), selection), nullptr));
        return reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
    };
    if (retry_.isActive() || hasGivenUp_)
        return;
    // A bar that was killed a moment ago may still be on the server's list.
    if (owner() != XCB_NONE) {
        if (--attemptsLeft_ > 0)
            return retry_.start(retryInterval);
        return giveUp(QStringLiteral("another system tray is running"));
    }
    xcb_set_selection_owner(wire_->raw(), tray_, selection, time);
    if (owner() != tray_)
        return retry_.start(retryInterval);
    owning_ = true;
    emit taken();
    wire_->send(wire_->root(), wire_->atom(TrayAtom::manager), {time, selection, tray_, 0, 0},
                XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

void TrayHost::giveUp(const QString& sentence) {
    if (std::exchange(hasGivenUp_, true))
        return;
    arrivals_->setEnabled(false);
    emit lost(sentence);
}

} // namespace orrivane::desktop
