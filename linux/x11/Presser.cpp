#include <linux/x11/Presser.h>

#include <xcb/shape.h>
#include <xcb/xtest.h>

#include <algorithm>

namespace orrivane::x11 {

int Presser::press(std::uint32_t icon, PointerButton button) {
    items_.current();
    const auto* item = items_.find(icon);
    if (!item)
        return cannotComplete;
    const Spot spot{item->rect.x + item->rect.width / 2, item->rect.y + item->rect.height / 2};
    const bool stepsAside = panelLiesOver(spot);
    if (stepsAside)
        setPanelTakesInput(false);
    const auto back = pointerIfReachable(icon, spot);
    if (back) {
        menus_.pressed(icon);
        click(spot, *back, button);
    }
    if (stepsAside)
        setPanelTakesInput(true);
    connection_.flush();
    return back ? 0 : cannotComplete;
}

bool Presser::panelLiesOver(const Spot& spot) const {
    const auto* panel = tree_.find(panel_);
    return panel && panel->mapped && tree_.rootRect(*panel).contains(spot.x, spot.y);
}

void Presser::setPanelTakesInput(bool takes) {
    auto* raw = connection_.raw();
    const auto cookie =
        takes ? xcb_shape_mask_checked(raw, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, panel_, 0, 0,
                                       XCB_PIXMAP_NONE)
              : xcb_shape_rectangles_checked(raw, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                                             XCB_CLIP_ORDERING_UNSORTED, panel_, 0, 0, 0, nullptr);
    connection_.ignore(cookie);
}

// Asks the server, not the mirror, which window a click would reach: one request for each step of
// the way down, all sent before the first answer is read.
std::optional<Presser::Spot> Presser::pointerIfReachable(std::uint32_t icon, const Spot& spot) {
    auto* raw = connection_.raw();
    std::vector<std::uint32_t> path;
    for (const auto* window = tree_.find(icon); window; window = tree_.find(window->parent))
        path.push_back(window->id);
    std::ranges::reverse(path);
    if (path.size() < 2 || path.front() != connection_.root())
        return std::nullopt;
    std::vector<xcb_translate_coordinates_cookie_t> steps;
    for (std::size_t i = 0; i + 1 < path.size(); ++i)
        steps.push_back(xcb_translate_coordinates(raw, connection_.root(), path[i],
                                                  static_cast<std::int16_t>(spot.x),
                                                  static_cast<std::int16_t>(spot.y)));
    const auto pointer = xcb_query_pointer(raw, connection_.root());
    const auto until = Connection::deadline();
    bool reachable = true;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const auto reply = connection_.wait<xcb_translate_coordinates_reply_t>(steps[i], until);
        reachable = reachable && reply && reply->child == path[i + 1];
    }
    const auto where = connection_.wait<xcb_query_pointer_reply_t>(pointer, until);
    if (!reachable || !where)
        return std::nullopt;
    return Spot{where->root_x, where->root_y};
}

void Presser::click(const Spot& spot, const Spot& back, PointerButton button) {
    const auto fake = [this](std::uint8_t type, std::uint8_t detail, const Spot& at) {
        connection_.ignore(xcb_test_fake_input_checked(
            connection_.raw(), type, detail, XCB_CURRENT_TIME, connection_.root(),
            static_cast<std::int16_t>(at.x), static_cast<std::int16_t>(at.y), 0));
    };
    const auto number = static_cast<std::uint8_t>(button);
    fake(XCB_MOTION_NOTIFY, 0, spot);
    fake(XCB_BUTTON_PRESS, number, spot);
    fake(XCB_BUTTON_RELEASE, number, spot);
    fake(XCB_MOTION_NOTIFY, 0, back);
    // The panel takes input again only after the server has dealt with the release.
    connection_.synchronize(Connection::deadline());
}

} // namespace orrivane::x11
