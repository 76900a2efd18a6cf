#include <desktop/session/Stage.h>

#include <linux/support/SetMonitor.h>

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace orrivane::desktop {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Owned = std::unique_ptr<T, Free>;

void require(xcb_connection_t* connection, xcb_void_cookie_t cookie, const char* what) {
    if (Owned<xcb_generic_error_t>(xcb_request_check(connection, cookie)))
        throw std::runtime_error(std::string("the X server refused ") + what);
}

} // namespace

Stage::Stage(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) {
        xcb_disconnect(connection_);
        throw std::runtime_error("the X server on " + display + " does not answer");
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

Stage::~Stage() {
    xcb_disconnect(connection_);
}

unsigned Stage::atom(const std::string& name) {
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void Stage::setCutout(const Panel& panel) {
    const std::array<std::uint32_t, 4> numbers{static_cast<std::uint32_t>(panel.notchX),
                                               static_cast<std::uint32_t>(panel.notchY),
                                               static_cast<std::uint32_t>(panel.notchWidth),
                                               static_cast<std::uint32_t>(panel.notchHeight)};
    const auto name = atom("_ORRIVANE_DISPLAY_CUTOUT");
    const auto cookie =
        panel.notchWidth > 0
            ? xcb_change_property_checked(connection_, XCB_PROP_MODE_REPLACE, root_, name,
                                          XCB_ATOM_CARDINAL, 32, numbers.size(), numbers.data())
            : xcb_delete_property_checked(connection_, root_, name);
    require(connection_, cookie, "the notch");
}

void Stage::addSecondScreen(const Panel& panel, int width, int height) {
    const Owned<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(
            connection_, xcb_randr_get_screen_resources_current(connection_, root_), nullptr));
    if (!resources || resources->num_outputs < 1)
        throw std::runtime_error("the X server has no RandR output");
    const auto output = *xcb_randr_get_screen_resources_current_outputs(resources.get());
    require(connection_,
            orrivane::setMonitor(connection_, {.root = root_,
                                               .name = atom("panel"),
                                               .x = 0,
                                               .y = 0,
                                               .width = static_cast<std::uint16_t>(panel.width),
                                               .height = static_cast<std::uint16_t>(panel.height),
                                               .primary = true,
                                               .output = output}),
            "the first screen");
    require(connection_,
            orrivane::setMonitor(connection_, {.root = root_,
                                               .name = atom("second"),
                                               .x = static_cast<std::int16_t>(panel.width),
                                               .y = 0,
                                               .width = static_cast<std::uint16_t>(width),
                                               .height = static_cast<std::uint16_t>(height),
                                               .primary = false,
                                               .output = 0}),
            "the second screen");
}

bool Stage::windowsAreManaged() {
    if (probe_ == 0) {
        probe_ = xcb_generate_id(connection_);
        require(connection_,
                xcb_create_window_checked(connection_, 0, probe_, root_, -10, -10, 1, 1, 0,
                                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0,
                                          nullptr),
                "a window");
    }
    // Again at every look: a request that comes too early may be lost.
    xcb_map_window(connection_, probe_);
    const Owned<xcb_get_property_reply_t> state(xcb_get_property_reply(
        connection_, xcb_get_property(connection_, 0, probe_, atom("WM_STATE"), XCB_ATOM_ANY, 0, 1),
        nullptr));
    if (!state || state->type == XCB_ATOM_NONE)
        return false;
    xcb_destroy_window(connection_, probe_);
    xcb_flush(connection_);
    probe_ = 0;
    return true;
}

unsigned Stage::trayOwner() {
    const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_, xcb_get_selection_owner(connection_, atom("_NET_SYSTEM_TRAY_S0")), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

bool Stage::trayHasOwner() {
    return trayOwner() != XCB_NONE;
}

// An icon is a window of another client with _XEMBED_INFO, right below one of the tray's.
int Stage::dockedItems() {
    const auto owner = trayOwner();
    if (owner == XCB_NONE)
        return 0;
    const auto mask = ~xcb_get_setup(connection_)->resource_id_mask;
    const auto info = atom("_XEMBED_INFO");
    int count = 0;
    std::vector<xcb_window_t> open{root_};
    while (!open.empty()) {
        const auto window = open.back();
        open.pop_back();
        const Owned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
        if (!tree)
            continue;
        const auto* children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            const bool foreign = ((children[i] ^ owner) & mask) != 0;
            open.push_back(children[i]);
            if (!foreign || ((window ^ owner) & mask) != 0)
                continue;
            const Owned<xcb_get_property_reply_t> property(xcb_get_property_reply(
                connection_,
                xcb_get_property(connection_, 0, children[i], info, XCB_ATOM_ANY, 0, 2), nullptr));
            count += property && property->type != XCB_ATOM_NONE ? 1 : 0;
        }
    }
    return count;
}

} // namespace orrivane::desktop
