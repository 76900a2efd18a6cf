#include <linux/x11/OpenMenus.h>

#include <algorithm>

namespace orrivane::x11 {

namespace {
constexpr int largestHelper = 8; // pixels; toolkits keep small windows of their own mapped
}

OpenMenus::OpenMenus(Connection& connection, WindowTree& tree)
    : connection_(connection)
    , tree_(tree)
    , events_(connection.onEvent([this](const xcb_generic_event_t& event) { handle(event); })) {}

void OpenMenus::pressed(std::uint32_t icon) {
    connection_.drain();
    lastPressed_[connection_.clientOf(icon)] = icon;
}

std::uint32_t OpenMenus::menuOf(std::uint32_t icon) {
    tree_.update();
    for (const auto& candidate : candidates_) {
        const auto* window = tree_.find(candidate.window);
        if (candidate.icon == icon && window && window->mapped && isMenu(*window))
            return candidate.window;
    }
    return 0;
}

bool OpenMenus::isMenu(const TreeWindow& window) const {
    const auto* root = tree_.find(connection_.root());
    // Some toolkits keep a larger helper outside the screen.
    return window.type != WindowType::tooltip && window.geometry.width > largestHelper &&
           window.geometry.height > largestHelper && root &&
           tree_.rootRect(window).intersects(root->geometry);
}

void OpenMenus::handle(const xcb_generic_event_t& event) {
    const auto forget = [this](std::uint32_t window) {
        std::erase_if(candidates_,
                      [&](const Candidate& candidate) { return candidate.window == window; });
    };
    if (event.response_type == XCB_MAP_NOTIFY) {
        const auto& map = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        const auto pressed = lastPressed_.find(connection_.clientOf(map.window));
        if (map.event == connection_.root() && map.override_redirect != 0 &&
            pressed != lastPressed_.end()) {
            forget(map.window);
            candidates_.push_back({map.window, pressed->second});
        }
    } else if (event.response_type == XCB_UNMAP_NOTIFY) {
        forget(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window);
    } else if (event.response_type == XCB_DESTROY_NOTIFY) {
        const auto window = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
        forget(window);
        std::erase_if(lastPressed_, [&](const auto& entry) { return entry.second == window; });
    }
}

} // namespace orrivane::x11
