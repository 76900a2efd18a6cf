#include <desktop/bar/RootWatch.h>

#include <algorithm>

#include <QCoreApplication>

#include <xcb/randr.h>

namespace orrivane::desktop {

RootWatch::RootWatch()
    : root_(xserver::root()) {
    // Not to the windows on it: the toolkit takes their moves for changes of the screen.
    xserver::listen(root_, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

RootWatch::~RootWatch() {
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

std::vector<QRect> RootWatch::monitors() {
    auto* connection = xserver::connection();
    const auto root = xserver::root();
    const auto sizeAsked = xcb_get_geometry(connection, root);
    std::vector<QRect> monitors;
    const auto* extension = xcb_get_extension_data(connection, &xcb_randr_id);
    if (extension && extension->present) {
        const Owned<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
            connection, xcb_randr_get_monitors(connection, root, 1), nullptr));
        if (reply)
            for (auto next = xcb_randr_get_monitors_monitors_iterator(reply.get()); next.rem > 0;
                 xcb_randr_monitor_info_next(&next)) {
                const QRect rect(next.data->x, next.data->y, next.data->width, next.data->height);
                if (!rect.isEmpty())
                    monitors.insert(next.data->primary ? monitors.begin() : monitors.end(), rect);
            }
    }
    const Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, sizeAsked, nullptr));
    if (monitors.empty())
        monitors.emplace_back(0, 0, size ? size->width : 1, size ? size->height : 1);
    return monitors;
}

bool RootWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const auto type = event->response_type & 0x7f;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto* changed = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (changed->window == root_)
            emit propertyChanged(changed->atom);
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        const auto* changed = reinterpret_cast<const xcb_configure_notify_event_t*>(event);
        if (changed->window == root_)
            emit screenChanged();
    }
    return false;
}

} // namespace orrivane::desktop
