#include "OneByOne.h"

#include <bench/support/MapWatch.h>
#include <linux/x11/Reply.h>

#include <stdexcept>

namespace orrivane::bench {

using x11::Owned;

OneByOne::OneByOne(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_) != 0)
        throw std::runtime_error("no X server at " + display);
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    selection_ = atomOf(connection_, "_NET_SYSTEM_TRAY_S0");
    windowType_ = atomOf(connection_, "_NET_WM_WINDOW_TYPE");
    embeddingInfo_ = atomOf(connection_, "_XEMBED_INFO");
}

OneByOne::~OneByOne() {
    xcb_disconnect(connection_);
}

std::size_t OneByOne::countIcons() {
    icons_ = 0;
    roundTrips_ = 1;
    const Owned<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection_, xcb_get_selection_owner(connection_, selection_), nullptr));
    trayOwner_ = owner ? owner->owner : 0;
    visit(root_, 0);
    return icons_;
}

void OneByOne::visit(xcb_window_t window, xcb_window_t parent) {
    ++roundTrips_;
    const auto attributes = xcb_get_window_attributes(connection_, window);
    const auto geometry = xcb_get_geometry(connection_, window);
    const auto tree = xcb_query_tree(connection_, window);
    const auto type = xcb_get_property(connection_, 0, window, windowType_, XCB_ATOM_ATOM, 0, 4);
    const auto embedding =
        xcb_get_property(connection_, 0, window, embeddingInfo_, XCB_GET_PROPERTY_TYPE_ANY, 0, 2);
    const Owned<xcb_get_window_attributes_reply_t> attributesReply(
        xcb_get_window_attributes_reply(connection_, attributes, nullptr));
    const Owned<xcb_get_geometry_reply_t> geometryReply(
        xcb_get_geometry_reply(connection_, geometry, nullptr));
    const Owned<xcb_query_tree_reply_t> treeReply(xcb_query_tree_reply(connection_, tree, nullptr));
    const Owned<xcb_get_property_reply_t> typeReply(
        xcb_get_property_reply(connection_, type, nullptr));
    const Owned<xcb_get_property_reply_t> embeddingReply(
        xcb_get_property_reply(connection_, embedding, nullptr));
    if (!attributesReply || !geometryReply || !treeReply || !typeReply || !embeddingReply)
        return;
    const auto client = ~xcb_get_setup(connection_)->resource_id_mask;
    if (embeddingReply->type != XCB_ATOM_NONE && (parent & client) == (trayOwner_ & client) &&
        (window & client) != (trayOwner_ & client) &&
        attributesReply->map_state == XCB_MAP_STATE_VIEWABLE)
        ++icons_;
    const auto* children = xcb_query_tree_children(treeReply.get());
    for (int i = 0; i < xcb_query_tree_children_length(treeReply.get()); ++i)
        visit(children[i], window);
}

} // namespace orrivane::bench
