#include <linux/x11/WindowTree.h>

#include <xcb/shape.h>

#include <algorithm>

namespace orrivane::x11 {

namespace {

constexpr std::uint8_t sentBit = 0x80;

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

bool isOlderThanList(const TreeWindow& parent, std::uint32_t sequence) {
    return parent.listedBy != 0 && static_cast<std::int32_t>(sequence - parent.listedBy) < 0;
}

} // namespace

void WindowTree::handle(const xcb_generic_event_t& event) {
    if (!rootsKnown_)
        return;
    const auto type = static_cast<std::uint8_t>(event.response_type & ~sentBit);
    // Clients may send any event themselves; only messages are meant to be.
    if (type != event.response_type && type != XCB_CLIENT_MESSAGE)
        return;
    const auto sequence = event.full_sequence;
    switch (type) {
    case XCB_CREATE_NOTIFY:
        return created(as<xcb_create_notify_event_t>(event), sequence);
    case XCB_DESTROY_NOTIFY:
        return destroyed(as<xcb_destroy_notify_event_t>(event).window, sequence);
    case XCB_MAP_NOTIFY:
        return mapped(as<xcb_map_notify_event_t>(event).window, true);
    case XCB_UNMAP_NOTIFY:
        return mapped(as<xcb_unmap_notify_event_t>(event).window, false);
    case XCB_CONFIGURE_NOTIFY:
        return configured(as<xcb_configure_notify_event_t>(event), sequence);
    case XCB_GRAVITY_NOTIFY: {
        const auto& gravity = as<xcb_gravity_notify_event_t>(event);
        if (const auto found = windows_.find(gravity.window); found != windows_.end()) {
            found->second.geometry.x = gravity.x;
            found->second.geometry.y = gravity.y;
            changed();
        }
        return;
    }
    case XCB_REPARENT_NOTIFY:
        return reparented(as<xcb_reparent_notify_event_t>(event), sequence);
    case XCB_CIRCULATE_NOTIFY:
        return circulated(as<xcb_circulate_notify_event_t>(event), sequence);
    case XCB_PROPERTY_NOTIFY:
        return propertyChanged(as<xcb_property_notify_event_t>(event));
    case XCB_CLIENT_MESSAGE:
        return messaged(as<xcb_client_message_event_t>(event));
    default:
        if (type == shapeEvent_)
            shaped(event);
    }
}

// A list of children may have been read after an event that is only now taken from the queue. The
// list then knows better who is in it and in which order; sizes and the like come right by
// themselves, because the events up to the list follow.
void WindowTree::created(const xcb_create_notify_event_t& event, std::uint32_t sequence) {
    // The server's own windows, such as a compositor's overlay, are in no list either.
    if (connection_.clientOf(event.window) == 0)
        return;
    const auto* parent = find(event.parent);
    if (!parent || !wantsChildren(*parent) || isOlderThanList(*parent, sequence))
        return;
    insertChild(event.parent, event.window);
    auto& window = windows_[event.window];
    window.geometry = {event.x, event.y, event.width, event.height};
    window.border = event.border_width;
    markDirty(event.window);
}

void WindowTree::destroyed(std::uint32_t id, std::uint32_t sequence) {
    if (id == trayOwner_)
        return invalidate();
    const auto* window = find(id);
    const auto* parent = window ? find(window->parent) : nullptr;
    // What a later list still names is another window that was given the same id.
    if (parent && isOlderThanList(*parent, sequence))
        markDirty(parent->id);
    forget(id);
}

void WindowTree::mapped(std::uint32_t id, bool isMapped) {
    const auto found = windows_.find(id);
    if (found == windows_.end())
        return;
    found->second.mapped = isMapped;
    changed();
    // Clients say what their window is before they map it, so what is not listened to is read then.
    const auto role = found->second.role;
    if (isMapped && (role == WindowRole::other || role == WindowRole::managed))
        markDirty(id);
}

void WindowTree::configured(const xcb_configure_notify_event_t& event, std::uint32_t sequence) {
    const auto found = windows_.find(event.window);
    if (found == windows_.end())
        return;
    auto& window = found->second;
    window.geometry = {event.x, event.y, event.width, event.height};
    window.border = event.border_width;
    if (!window.isShaped)
        window.bounding = {0, 0, event.width, event.height};
    changed();
    const auto parent = windows_.find(window.parent);
    if (parent == windows_.end() || isOlderThanList(parent->second, sequence))
        return;
    auto& siblings = parent->second.children;
    const auto below = std::ranges::find(siblings, event.above_sibling);
    if (event.above_sibling != XCB_WINDOW_NONE && below == siblings.end()) {
        markDirty(window.parent);
        return;
    }
    std::erase(siblings, event.window);
    const auto place = event.above_sibling == XCB_WINDOW_NONE
                           ? siblings.begin()
                           : std::next(std::ranges::find(siblings, event.above_sibling));
    siblings.insert(place, event.window);
}

void WindowTree::reparented(const xcb_reparent_notify_event_t& event, std::uint32_t sequence) {
    const auto* known = find(event.window);
    const auto* before = known ? find(known->parent) : nullptr;
    if (before && isOlderThanList(*before, sequence)) {
        markDirty(event.window); // it is where the list says, but not what it was there before
        return;
    }
    const auto* parent = find(event.parent);
    if (!parent || !wantsChildren(*parent) || isOlderThanList(*parent, sequence)) {
        forget(event.window);
        return;
    }
    insertChild(event.parent, event.window);
    auto& siblings = windows_[event.parent].children;
    std::erase(siblings, event.window); // it comes to lie on top, also of the siblings it had
    siblings.push_back(event.window);
    auto& window = windows_[event.window];
    window.geometry.x = event.x;
    window.geometry.y = event.y;
    window.role = WindowRole::other; // until it is read in its new place
    markDirty(event.window);
}

void WindowTree::circulated(const xcb_circulate_notify_event_t& event, std::uint32_t sequence) {
    const auto* window = find(event.window);
    const auto parent = window ? windows_.find(window->parent) : windows_.end();
    if (parent == windows_.end() || isOlderThanList(parent->second, sequence))
        return;
    auto& siblings = parent->second.children;
    std::erase(siblings, event.window);
    siblings.insert(event.place == XCB_PLACE_ON_TOP ? siblings.end() : siblings.begin(),
                    event.window);
    changed();
}

void WindowTree::propertyChanged(const xcb_property_notify_event_t& event) {
    if (event.window == connection_.root()) {
        if (event.atom == connection_.atom(Atom::supportingWmCheck))
            invalidate();
        return;
    }
    if (event.atom == connection_.atom(Atom::xembedInfo) ||
        event.atom == connection_.atom(Atom::windowType))
        markDirty(event.window);
}

void WindowTree::shaped(const xcb_generic_event_t& generic) {
    const auto& event = as<xcb_shape_notify_event_t>(generic);
    const auto found = windows_.find(event.affected_window);
    if (found == windows_.end() || event.shape_kind != XCB_SHAPE_SK_BOUNDING)
        return;
    auto& window = found->second;
    window.isShaped = event.shaped != 0;
    window.bounding =
        window.isShaped
            ? PixelRect{event.extents_x, event.extents_y, event.extents_width, event.extents_height}
            : PixelRect{0, 0, window.geometry.width, window.geometry.height};
    changed();
}

void WindowTree::messaged(const xcb_client_message_event_t& event) {
    // A tray tells the root that it has taken the selection.
    if (event.type == connection_.atom(Atom::manager) && event.format == 32 &&
        event.data.data32[1] == connection_.atom(Atom::traySelection))
        invalidate();
}

} // namespace orrivane::x11
