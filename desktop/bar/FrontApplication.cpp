#include <desktop/bar/FrontApplication.h>

#include <desktop/bar/Ewmh.h>
#include <desktop/bar/IconHints.h>

#include <QCoreApplication>

namespace orrivane::desktop {

namespace {

constexpr auto menusName = "_ORRIVANE_APP_MENUS";
// Between two windows a window manager says for a moment that none is active.
constexpr int emptyMoment = 120; // milliseconds

std::string nameOf(xcb_window_t window) {
    const auto classes = ewmh::text(window, "WM_CLASS");
    if (auto name = classOf(classes); !name.empty())
        return name;
    if (auto title = ewmh::text(window, "_NET_WM_NAME"); !title.empty())
        return title;
    return "Application";
}

// A window that is gone or hidden may still be called the active one when no other takes its place.
bool isShowing(xcb_window_t window) {
    auto* connection = xserver::connection();
    xcb_generic_error_t* error = nullptr;
    const Owned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection, xcb_get_window_attributes(connection, window), &error));
    const Owned<xcb_generic_error_t> held(error);
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

} // namespace

FrontApplication::FrontApplication(RootWatch& root)
    : activeProperty_(xserver::atom("_NET_ACTIVE_WINDOW"))
    , menusProperty_(xserver::atom(menusName)) {
    nobody_.setSingleShot(true);
    nobody_.setInterval(emptyMoment);
    connect(&nobody_, &QTimer::timeout, this, [this] { take(XCB_NONE); });
    connect(&root, &RootWatch::propertyChanged, this, [this](xcb_atom_t property) {
        if (property == activeProperty_)
            look();
    });
    QCoreApplication::instance()->installNativeEventFilter(this);
    look();
}

FrontApplication::~FrontApplication() {
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

void FrontApplication::choose(int menu, int entry) const {
    if (state_.window == XCB_NONE)
        return;
    if (state_.menus.empty())
        return ewmh::close(state_.window);
    ewmh::tell(state_.window, state_.window, "_ORRIVANE_APP_MENU_CHOICE",
               {static_cast<std::uint32_t>(menu), static_cast<std::uint32_t>(entry), 0, 0, 0},
               XCB_EVENT_MASK_NO_EVENT);
}

void FrontApplication::look() {
    active_ = ewmh::activeWindow();
    if (active_ == XCB_NONE ||
        !xserver::listen(active_,
                         XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY) ||
        !isShowing(active_)) {
        if (!nobody_.isActive())
            nobody_.start();
        return;
    }
    nobody_.stop();
    take(active_);
}

void FrontApplication::take(xcb_window_t window) {
    State now{window, {}, {}};
    if (window != XCB_NONE) {
        now.name = nameOf(window);
        now.menus = AppMenu::parse(ewmh::text(window, menusName));
    }
    if (now == state_)
        return;
    state_ = std::move(now);
    emit changed();
}

bool FrontApplication::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY: {
        const auto* changed = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (state_.window != XCB_NONE && changed->window == state_.window &&
            (changed->atom == menusProperty_ || changed->atom == XCB_ATOM_WM_CLASS))
            take(state_.window);
        break;
    }
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_DESTROY_NOTIFY: {
        const auto* changed = reinterpret_cast<const xcb_map_notify_event_t*>(event);
        if (active_ != XCB_NONE && changed->event == active_ && changed->window == active_)
            look();
        break;
    }
    default:
        break;
    }
    return false;
}

} // namespace orrivane::desktop
