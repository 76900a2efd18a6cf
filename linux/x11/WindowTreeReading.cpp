#include <linux/x11/WindowTree.h>

#include <xcb/shape.h>

#include <unordered_set>
#include <utility>

namespace orrivane::x11 {

namespace {

std::uint32_t eventsFor(WindowRole role) {
    switch (role) {
    case WindowRole::root:
        return Connection::rootEvents;
    case WindowRole::managed:
        return XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    case WindowRole::dockPart:
        return XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    case WindowRole::icon:
        return XCB_EVENT_MASK_PROPERTY_CHANGE;
    case WindowRole::other:
        break;
    }
    return 0;
}

PixelRect wholeOf(const TreeWindow& window) {
    return {0, 0, window.geometry.width, window.geometry.height};
}

} // namespace

/// The requests under way for one window; a sequence of 0 was not sent.
struct WindowTree::PendingRead {
    std::uint32_t id = 0;
    WindowRole role = WindowRole::other;
    xcb_get_window_attributes_cookie_t attributes{};
    xcb_get_geometry_cookie_t geometry{};
    xcb_query_tree_cookie_t tree{};
    xcb_get_property_cookie_t type{};
    xcb_get_property_cookie_t xembed{};
    xcb_shape_query_extents_cookie_t extents{};
};

bool WindowTree::update() {
    connection_.drain();
    if (connection_.isLost())
        invalidate();
    const auto until = Connection::deadline();
    // A tray or a window manager that changes meanwhile makes the read begin anew.
    while (!rootsKnown_ || !dirty_.empty()) {
        if (rootsKnown_ ? !readDirty(until) : !readRoots(until)) {
            invalidate();
            return false;
        }
        connection_.drain();
        // Windows that never stop changing are left for the next update.
        if (std::chrono::steady_clock::now() > until - Connection::answerLimit / 2)
            break;
    }
    wasComplete_ = wasComplete_ || (rootsKnown_ && dirty_.empty());
    return wasComplete_;
}

bool WindowTree::readRoots(Deadline until) {
    auto* raw = connection_.raw();
    const auto root = connection_.root();
    const auto owner = xcb_get_selection_owner(raw, connection_.atom(Atom::traySelection));
    const auto check = xcb_get_property(raw, 0, root, connection_.atom(Atom::supportingWmCheck),
                                        XCB_ATOM_WINDOW, 0, 1);
    ++roundTrips_;
    const auto ownerReply = connection_.wait<xcb_get_selection_owner_reply_t>(owner, until);
    const auto checkReply = connection_.wait<xcb_get_property_reply_t>(check, until);
    if (!ownerReply || !checkReply)
        return false;
    windows_.clear();
    dirty_.clear();
    trayOwner_ = ownerReply->owner;
    managerWindow_ = 0;
    if (checkReply->format == 32 && xcb_get_property_value_length(checkReply.get()) == 4)
        managerWindow_ =
            *static_cast<const std::uint32_t*>(xcb_get_property_value(checkReply.get()));
    const auto confirmed = listenToTrayOwner(until);
    if (!confirmed)
        return false;
    shapeEvent_ =
        static_cast<std::uint8_t>(connection_.firstEvent(&xcb_shape_id) + XCB_SHAPE_NOTIFY);
    windows_[root].id = root;
    windows_[root].role = WindowRole::root;
    rootsKnown_ = *confirmed;
    markDirty(root);
    return true;
}

// Whether the tray is still the one that was found, now that its end will be heard of.
std::optional<bool> WindowTree::listenToTrayOwner(Deadline until) {
    if (trayOwner_ == 0)
        return true;
    auto* raw = connection_.raw();
    constexpr std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    connection_.ignore(
        xcb_change_window_attributes_checked(raw, trayOwner_, XCB_CW_EVENT_MASK, &events));
    ++roundTrips_;
    const auto owner = connection_.wait<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(raw, connection_.atom(Atom::traySelection)), until);
    return owner ? std::optional(owner->owner == trayOwner_) : std::nullopt;
}

bool WindowTree::readDirty(Deadline until) {
    std::vector<PendingRead> reads;
    reads.reserve(dirty_.size());
    for (const auto id : dirty_)
        if (const auto* window = find(id))
            reads.push_back(send(id, roleOf(*window)));
    dirty_.clear();
    ++roundTrips_;
    std::set<std::uint32_t> next;
    bool answered = true;
    for (const auto& read : reads)
        answered = receive(read, until, next) && answered;
    if (!answered)
        return false;
    dirty_.insert(next.begin(), next.end());
    changed();
    return true;
}

WindowTree::PendingRead WindowTree::send(std::uint32_t id, WindowRole role) {
    auto* raw = connection_.raw();
    const auto& window = windows_[id];
    const auto* parent = find(window.parent);
    PendingRead read;
    read.id = id;
    read.role = role;
    std::uint32_t events = eventsFor(role);
    if (id == trayOwner_)
        events |= XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (events != 0)
        connection_.ignore(
            xcb_change_window_attributes_checked(raw, id, XCB_CW_EVENT_MASK, &events));
    read.attributes = xcb_get_window_attributes(raw, id);
    read.geometry = xcb_get_geometry(raw, id);
    if (events != 0 && role != WindowRole::icon)
        read.tree = xcb_query_tree(raw, id);
    if (!parent)
        return read;
    if (parent->role == WindowRole::root) {
        connection_.ignore(xcb_shape_select_input_checked(raw, id, 1));
        read.extents = xcb_shape_query_extents(raw, id);
    }
    if (parent->role == WindowRole::root || parent->role == WindowRole::managed)
        read.type =
            xcb_get_property(raw, 0, id, connection_.atom(Atom::windowType), XCB_ATOM_ATOM, 0, 4);
    else if (connection_.clientOf(id) != connection_.clientOf(parent->id))
        read.xembed = xcb_get_property(raw, 0, id, connection_.atom(Atom::xembedInfo),
                                       XCB_GET_PROPERTY_TYPE_ANY, 0, 2);
    return read;
}

bool WindowTree::receive(const PendingRead& read, Deadline until, std::set<std::uint32_t>& next) {
    const auto unanswered = connection_.unanswered();
    const auto attributes =
        connection_.wait<xcb_get_window_attributes_reply_t>(read.attributes, until);
    const auto geometry = connection_.wait<xcb_get_geometry_reply_t>(read.geometry, until);
    const auto optional = [&]<typename Reply>(auto cookie, Owned<Reply>& reply) {
        if (cookie.sequence != 0)
            reply = connection_.wait<Reply>(cookie, until);
    };
    Owned<xcb_query_tree_reply_t> tree;
    Owned<xcb_get_property_reply_t> type;
    Owned<xcb_get_property_reply_t> xembed;
    Owned<xcb_shape_query_extents_reply_t> extents;
    optional(read.tree, tree);
    optional(read.type, type);
    optional(read.xembed, xembed);
    optional(read.extents, extents);
    if (connection_.unanswered() != unanswered || connection_.isLost())
        return false;
    if (!windows_.contains(read.id))
        return true;
    if (!attributes || !geometry) {
        forget(read.id);
        return true;
    }

    auto& window = windows_[read.id];
    window.geometry = {geometry->x, geometry->y, geometry->width, geometry->height};
    window.border = geometry->border_width;
    window.mapped = attributes->map_state != XCB_MAP_STATE_UNMAPPED;
    window.inputOnly = attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
    window.isShaped = extents && extents->bounding_shaped != 0;
    window.bounding = wholeOf(window);
    if (window.isShaped)
        window.bounding = {extents->bounding_shape_extents_x, extents->bounding_shape_extents_y,
                           extents->bounding_shape_extents_width,
                           extents->bounding_shape_extents_height};
    window.type = typeIn(type.get());
    window.hasXembedInfo = xembed && xembed->type != XCB_ATOM_NONE;
    // What the children are follows from it.
    if (const auto before = std::exchange(window.role, roleOf(window)); before != window.role)
        next.insert(window.children.begin(), window.children.end());
    if (window.role != read.role)
        next.insert(read.id); // read again, now listening to what the role needs
    else
        takeChildren(read, tree.get(), next);
    return true;
}

void WindowTree::takeChildren(const PendingRead& read, const xcb_query_tree_reply_t* tree,
                              std::set<std::uint32_t>& next) {
    const auto id = read.id;
    std::vector<std::uint32_t> listed;
    if (tree && wantsChildren(windows_[id])) {
        const auto* first = xcb_query_tree_children(tree);
        listed.assign(first, first + xcb_query_tree_children_length(tree));
    }
    const std::unordered_set<std::uint32_t> present(listed.begin(), listed.end());
    const auto before = windows_[id].children;
    for (const auto child : before)
        if (!present.contains(child))
            forget(child);
    for (const auto child : listed) {
        const bool known = windows_.contains(child) && windows_[child].parent == id;
        insertChild(id, child);
        if (!known)
            next.insert(child);
    }
    windows_[id].children = std::move(listed);
    windows_[id].listedBy = read.tree.sequence;
}

WindowType WindowTree::typeIn(const xcb_get_property_reply_t* reply) const {
    if (!reply || reply->format != 32)
        return WindowType::none;
    const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply));
    const auto count = xcb_get_property_value_length(reply) / 4;
    for (int i = 0; i < count; ++i) {
        if (atoms[i] == connection_.atom(Atom::windowTypeDock))
            return WindowType::dock;
        if (atoms[i] == connection_.atom(Atom::windowTypeTooltip))
            return WindowType::tooltip;
    }
    return WindowType::none;
}

} // namespace orrivane::x11
