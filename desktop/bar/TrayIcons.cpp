// What the tray does with the icons themselves; TrayHost.cpp has its standing on the screen.
#include <desktop/bar/TrayHost.h>

#include <algorithm>

#include <xcb/xfixes.h>

namespace orrivane::desktop {

namespace {

constexpr std::uint32_t embeddedNotify = 0;
constexpr std::uint32_t protocolVersion = 0;

// The server closes the connections of an ended process one after the other and in any order. Both
// keep the icon, and both send it to the root window: the nearest window that a closing connection
// does not own would be one that the other takes along.
void keepBeyondThisProcess(const TrayWire& wire, xcb_window_t icon) {
    for (auto* connection : {wire.raw(), xserver::connection()}) {
        const auto cookie = xcb_xfixes_change_save_set_checked(
            connection, XCB_SET_MODE_INSERT, XCB_XFIXES_SAVE_SET_TARGET_ROOT,
            XCB_XFIXES_SAVE_SET_MAPPING_MAP, icon);
        xcb_discard_reply(connection, cookie.sequence);
    }
    xcb_flush(xserver::connection());
}

} // namespace

void TrayHost::dock(xcb_window_t icon) {
    if (row_.contains(icon) || icon == tray_ || icon == wire_->root())
        return;
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    wire_->ignore(
        xcb_change_window_attributes_checked(wire_->raw(), icon, XCB_CW_EVENT_MASK, &events));
    const auto facts = wire_->factsOf(icon);
    if (!facts)
        return;
    keepBeyondThisProcess(*wire_, icon);
    const Owned<xcb_generic_error_t> refused(xcb_request_check(
        wire_->raw(), xcb_reparent_window_checked(wire_->raw(), icon, tray_, 0, 0)));
    if (refused)
        return;
    const std::uint32_t noBorder = 0;
    wire_->ignore(xcb_configure_window_checked(wire_->raw(), icon, XCB_CONFIG_WINDOW_BORDER_WIDTH,
                                               &noBorder));
    icons_[icon] = {facts->declaredWidth > 0, {}};
    row_.add(icon, OrderFile::keptName(facts->application),
             facts->declaredWidth > 0 ? facts->declaredWidth
                                      : std::max(facts->width, settings_.leastWidth));
    row_.setShown(icon, facts->wantsToShow);
    arrange();
    wire_->send(icon, wire_->atom(TrayAtom::xembed),
                {XCB_CURRENT_TIME, embeddedNotify, 0, tray_, protocolVersion},
                XCB_EVENT_MASK_NO_EVENT);
    setMapped(icon, facts->wantsToShow);
    keepOrder();
}

void TrayHost::forget(xcb_window_t icon) {
    if (icons_.erase(icon) == 0)
        return;
    row_.remove(icon);
    arrange();
}

void TrayHost::readAgain(xcb_window_t icon, xcb_atom_t changed) {
    const auto known = icons_.find(icon);
    const auto facts = known == icons_.end() ? std::nullopt : wire_->factsOf(icon);
    if (!facts)
        return;
    if (facts->declaredWidth > 0) {
        known->second.declaresWidth = true;
        row_.setNaturalWidth(icon, facts->declaredWidth);
        arrange();
    }
    if (changed == wire_->atom(TrayAtom::xembedInfo))
        setMapped(icon, facts->wantsToShow);
}

void TrayHost::answerConfigure(const xcb_configure_request_event_t& request) {
    const auto known = icons_.find(request.window);
    if (known == icons_.end())
        return;
    const QRect before = known->second.granted;
    // Asking for what it has already been given says nothing of what it would like.
    if (!known->second.declaresWidth && (request.value_mask & XCB_CONFIG_WINDOW_WIDTH) != 0 &&
        request.width != before.width()) {
        row_.setNaturalWidth(request.window, std::max<int>(request.width, settings_.leastWidth));
        arrange();
    }
    if (known->second.granted == before)
        confirmPlace(request.window, before);
}

// A window that window managers leave alone is left alone by the server's redirection too.
void TrayHost::putBack(const xcb_configure_notify_event_t& placed) const {
    const auto known = icons_.find(placed.window);
    if (known != icons_.end() && !known->second.granted.isEmpty() &&
        known->second.granted != QRect(placed.x, placed.y, placed.width, placed.height))
        configure(placed.window, known->second.granted);
}

// Who asks to be configured waits for an answer, also when nothing changes.
void TrayHost::confirmPlace(xcb_window_t icon, const QRect& place) const {
    xcb_configure_notify_event_t notice{};
    notice.response_type = XCB_CONFIGURE_NOTIFY;
    notice.event = icon;
    notice.window = icon;
    notice.x = static_cast<std::int16_t>(onRoot_.x() + place.x());
    notice.y = static_cast<std::int16_t>(onRoot_.y() + place.y());
    notice.width = static_cast<std::uint16_t>(place.width());
    notice.height = static_cast<std::uint16_t>(place.height());
    wire_->ignore(xcb_send_event_checked(wire_->raw(), 0, icon, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                                         reinterpret_cast<const char*>(&notice)));
}

void TrayHost::setMapped(xcb_window_t icon, bool mapped) const {
    wire_->ignore(mapped ? xcb_map_window_checked(wire_->raw(), icon)
                         : xcb_unmap_window_checked(wire_->raw(), icon));
}

void TrayHost::arrange() {
    for (const auto& item : row_.placed()) {
        const QRect place(item.x, 0, item.width, std::max(1, place_.height()));
        auto& granted = icons_[item.id].granted;
        if (granted == place)
            continue;
        granted = place;
        configure(item.id, place);
    }
}

void TrayHost::configure(xcb_window_t icon, const QRect& place) const {
    const std::uint32_t values[] = {
        static_cast<std::uint32_t>(place.x()), static_cast<std::uint32_t>(place.y()),
        static_cast<std::uint32_t>(place.width()), static_cast<std::uint32_t>(place.height()),
        XCB_STACK_MODE_ABOVE};
    constexpr std::uint16_t geometry = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y |
                                       XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    // The held one floats over the others.
    constexpr std::uint16_t raised = geometry | XCB_CONFIG_WINDOW_STACK_MODE;
    wire_->ignore(xcb_configure_window_checked(wire_->raw(), icon,
                                               icon == row_.dragged() ? raised : geometry, values));
}

void TrayHost::keepOrder() {
    auto order = row_.order();
    if (order == keptOrder_ || row_.dragged() != 0)
        return;
    orderFile_.write(order);
    keptOrder_ = std::move(order);
}

} // namespace orrivane::desktop
