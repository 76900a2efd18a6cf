#include "ObserverWire.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

namespace orrivane::e2e {

namespace {

constexpr int smallestPopup = 8;

std::pair<std::string, std::string> splitClass(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 8)
        return {};
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply));
    const std::string both(bytes, reply->value_len);
    const std::size_t end = both.find('\0');
    if (end == std::string::npos)
        return {both, {}};
    return {both.substr(0, end), both.substr(end + 1).c_str()};
}

MapState mapStateOf(std::uint8_t state) {
    switch (state) {
    case XCB_MAP_STATE_VIEWABLE:
        return MapState::viewable;
    case XCB_MAP_STATE_UNVIEWABLE:
        return MapState::unviewable;
    default:
        return MapState::unmapped;
    }
}

} // namespace

std::optional<WindowState> Observer::window(xcb_window_t id) {
    xcb_connection_t* connection = wire_->connection;
    const auto geometry = wire_->reply(xcb_get_geometry_reply, xcb_get_geometry(connection, id));
    const auto attributes =
        wire_->reply(xcb_get_window_attributes_reply, xcb_get_window_attributes(connection, id));
    const auto family = wire_->reply(xcb_query_tree_reply, xcb_query_tree(connection, id));
    const auto origin =
        wire_->reply(xcb_translate_coordinates_reply,
                     xcb_translate_coordinates(connection, id, wire_->screen->root, 0, 0));
    if (!geometry || !attributes || !family || !origin)
        return std::nullopt;
    WindowState state;
    state.id = id;
    state.parent = family->parent;
    state.area = {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
    state.depth = geometry->depth;
    state.inputOnly = attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
    state.overrideRedirect = attributes->override_redirect != 0;
    state.mapState = mapStateOf(attributes->map_state);
    const auto classes = wire_->property(id, XCB_ATOM_WM_CLASS);
    std::tie(state.instanceName, state.className) = splitClass(classes.get());
    const auto type = cardinals(id, "_NET_WM_WINDOW_TYPE");
    if (type && !type->empty())
        state.type = wire_->atomName(type->front());
    const auto info = cardinals(id, "_XEMBED_INFO");
    if (info && info->size() >= 2)
        state.xembed = {{info->at(0), info->at(1)}};
    return state;
}

std::vector<WindowState> Observer::tree() {
    std::vector<WindowState> result;
    std::set<xcb_window_t> seen;
    const std::function<void(xcb_window_t, int)> visit = [&](xcb_window_t id, int level) {
        // One that moves to another parent meanwhile is a child of both.
        if (!seen.insert(id).second)
            return;
        auto state = window(id);
        if (!state)
            return;
        state->level = level;
        result.push_back(*state);
        const auto family =
            wire_->reply(xcb_query_tree_reply, xcb_query_tree(wire_->connection, id));
        if (!family)
            return;
        const xcb_window_t* children = xcb_query_tree_children(family.get());
        for (int i = 0; i < xcb_query_tree_children_length(family.get()); ++i)
            visit(children[i], level + 1);
    };
    visit(root(), 0);
    return result;
}

std::vector<WindowState> Observer::topLevels() {
    std::vector<WindowState> result;
    const auto family =
        wire_->reply(xcb_query_tree_reply, xcb_query_tree(wire_->connection, root()));
    const int count = family ? xcb_query_tree_children_length(family.get()) : 0;
    for (int i = 0; i < count; ++i) {
        if (auto state = window(xcb_query_tree_children(family.get())[i])) {
            state->level = 1;
            result.push_back(*state);
        }
    }
    return result;
}

xcb_window_t Observer::leafAt(const PixelPoint& place) {
    xcb_window_t leaf = root();
    for (;;) {
        const auto reply =
            wire_->reply(xcb_translate_coordinates_reply,
                         xcb_translate_coordinates(wire_->connection, root(), leaf,
                                                   static_cast<std::int16_t>(place.x),
                                                   static_cast<std::int16_t>(place.y)));
        if (!reply || reply->child == XCB_NONE)
            return leaf;
        leaf = reply->child;
    }
}

xcb_window_t Observer::selectionOwner(const std::string& selection) {
    const auto reply = wire_->reply(xcb_get_selection_owner_reply,
                                    xcb_get_selection_owner(wire_->connection, atom(selection)));
    return reply ? reply->owner : XCB_NONE;
}

xcb_window_t Observer::trayOwner() {
    return selectionOwner("_NET_SYSTEM_TRAY_S0");
}

std::vector<WindowState> Observer::trayIcons() {
    const xcb_window_t owner = trayOwner();
    std::vector<WindowState> icons;
    if (owner == XCB_NONE)
        return icons;
    for (const WindowState& state : tree())
        if (state.xembed && sameClient(state.parent, owner) && !sameClient(state.id, owner))
            icons.push_back(state);
    std::stable_sort(icons.begin(), icons.end(),
                     [](const auto& a, const auto& b) { return a.area.x < b.area.x; });
    return icons;
}

std::optional<WindowState> Observer::dockOf(xcb_window_t icon) {
    const std::string dock = "_NET_WM_WINDOW_TYPE_DOCK";
    if (icon == XCB_NONE) {
        const std::vector<WindowState> all = tree();
        const auto found = std::find_if(all.begin(), all.end(), [&](const WindowState& state) {
            return state.type == dock && state.isViewable();
        });
        return found == all.end() ? std::nullopt : std::optional(*found);
    }
    std::optional<WindowState> state = window(icon);
    while (state && state->id != root() && state->type != dock)
        state = window(state->parent);
    return state && state->type == dock ? state : std::nullopt;
}

std::vector<WindowState> Observer::popups() {
    const PixelRect screen = rootArea();
    std::vector<WindowState> result;
    for (const WindowState& state : topLevels()) {
        const bool large = state.area.width > smallestPopup && state.area.height > smallestPopup;
        if (state.isViewable() && state.overrideRedirect && !state.inputOnly && large &&
            state.type != "_NET_WM_WINDOW_TYPE_TOOLTIP" && state.area.intersects(screen)) {
            result.push_back(state);
        }
    }
    return result;
}

} // namespace orrivane::e2e
