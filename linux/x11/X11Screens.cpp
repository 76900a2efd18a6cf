#include <linux/x11/X11Screens.h>

#include <linux/x11/KnownPanels.h>

#include <xcb/dpms.h>
#include <xcb/randr.h>
#include <xcb/screensaver.h>

#include <algorithm>

namespace orrivane::x11 {

namespace {

constexpr std::uint8_t sentBit = 0x80;
constexpr std::uint32_t mostCutouts = 16;

PixelRect intersection(const PixelRect& a, const PixelRect& b) {
    const int left = std::max(a.x, b.x);
    const int top = std::max(a.y, b.y);
    return {left, top, std::min(a.right(), b.right()) - left,
            std::min(a.bottom(), b.bottom()) - top};
}

} // namespace

X11Screens::X11Screens(Connection& connection, double scale, CutoutFile userCutout,
                       std::string deviceTree)
    : connection_(connection)
    , scale_(scale)
    , userCutout_(std::move(userCutout))
    , deviceTree_(std::move(deviceTree))
    , events_(connection.onEvent([this](const xcb_generic_event_t& event) { handle(event); })) {
    listen();
}

void X11Screens::listen() {
    auto* raw = connection_.raw();
    const auto root = connection_.root();
    randrEvent_ = connection_.firstEvent(&xcb_randr_id);
    connection_.ignore(xcb_randr_select_input_checked(raw, root,
                                                      XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE |
                                                          XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                                          XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE));
    if (connection_.has(&xcb_screensaver_id)) {
        saverEvent_ = connection_.firstEvent(&xcb_screensaver_id);
        connection_.ignore(
            xcb_screensaver_select_input_checked(raw, root, XCB_SCREENSAVER_EVENT_NOTIFY_MASK));
        const auto state = connection_.wait<xcb_screensaver_query_info_reply_t>(
            xcb_screensaver_query_info(raw, root), Connection::deadline());
        saverActive_ = state && state->state == XCB_SCREENSAVER_STATE_ON;
    }
    if (connection_.has(&xcb_dpms_id)) {
        const auto capable = connection_.wait<xcb_dpms_capable_reply_t>(xcb_dpms_capable(raw),
                                                                        Connection::deadline());
        hasDpms_ = capable && capable->capable != 0;
    }
}

void X11Screens::handle(const xcb_generic_event_t& event) {
    const auto type = static_cast<std::uint8_t>(event.response_type & ~sentBit);
    bool changed = type == randrEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                   type == randrEvent_ + XCB_RANDR_NOTIFY;
    if (type == XCB_CONFIGURE_NOTIFY) {
        // The only event that tells of monitors set by hand.
        changed = reinterpret_cast<const xcb_configure_notify_event_t&>(event).window ==
                  connection_.root();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        changed = property.window == connection_.root() &&
                  (property.atom == connection_.atom(Atom::displayCutout) ||
                   property.atom == connection_.atom(Atom::workArea));
    } else if (saverEvent_ != 0 && type == saverEvent_ + XCB_SCREENSAVER_NOTIFY) {
        const auto& saver = reinterpret_cast<const xcb_screensaver_notify_event_t&>(event);
        const bool active = saver.state == XCB_SCREENSAVER_STATE_ON;
        if (active != saverActive_) {
            saverActive_ = active;
            blanks_.notify(active);
        }
    }
    if (changed) {
        known_ = false;
        changes_.notify();
    }
}

const std::vector<Monitor>& X11Screens::monitors() {
    if (!known_)
        readMonitors();
    return monitors_;
}

void X11Screens::readMonitors() {
    auto* raw = connection_.raw();
    const auto until = Connection::deadline();
    const auto monitors = xcb_randr_get_monitors(raw, connection_.root(), 1);
    const auto cutouts =
        xcb_get_property(raw, 0, connection_.root(), connection_.atom(Atom::displayCutout),
                         XCB_ATOM_CARDINAL, 0, 4 * mostCutouts);
    monitors_.clear();
    const auto reply = connection_.wait<xcb_randr_get_monitors_reply_t>(monitors, until);
    const auto laid = readCutouts(cutouts, until);
    if (!reply)
        return;
    for (auto entry = xcb_randr_get_monitors_monitors_iterator(reply.get()); entry.rem > 0;
         xcb_randr_monitor_info_next(&entry)) {
        const Monitor monitor{
            {entry.data->x, entry.data->y, entry.data->width, entry.data->height}, std::nullopt, 0};
        if (!monitor.rect.isEmpty())
            monitors_.insert(entry.data->primary != 0 ? monitors_.begin() : monitors_.end(),
                             monitor);
    }
    layCutouts(laid);
    known_ = true;
}

std::vector<Rect> X11Screens::readCutouts(xcb_get_property_cookie_t cookie, Deadline until) {
    std::vector<Rect> cutouts;
    const auto reply = connection_.wait<xcb_get_property_reply_t>(cookie, until);
    const bool isSet = reply && reply->type != XCB_ATOM_NONE;
    if (reply && reply->format == 32) {
        const auto* numbers =
            static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        const int count = xcb_get_property_value_length(reply.get()) / 4;
        for (int i = 0; i + 3 < count; i += 4)
            cutouts.push_back(
                {{static_cast<double>(numbers[i]), static_cast<double>(numbers[i + 1])},
                 {static_cast<double>(numbers[i + 2]), static_cast<double>(numbers[i + 3])}});
    }
    if (!isSet)
        if (const auto cutout = userCutout_.read())
            cutouts.push_back(*cutout);
    return cutouts;
}

void X11Screens::layCutouts(const std::vector<Rect>& cutouts) {
    for (auto& monitor : monitors_) {
        const Rect screen = Space::real(monitor.rect);
        for (const auto& cutout : cutouts) {
            // A camera at the bottom is no notch.
            const bool inside = cutout.minX() >= screen.minX() && cutout.maxX() <= screen.maxX() &&
                                cutout.minY() >= screen.minY() && cutout.maxY() <= screen.midY();
            if (monitor.cutout || !inside || cutout.width() <= 0 || cutout.height() <= 0)
                continue;
            monitor.cutout = cutout;
            monitor.inset = cutout.maxY() - screen.minY();
        }
        if (!monitor.cutout)
            monitor.inset =
                KnownPanels::notchRows(monitor.rect.width, monitor.rect.height, deviceTree_)
                    .value_or(0);
    }
}

Space X11Screens::space() {
    const auto& all = monitors();
    if (all.empty())
        return {scale_, 0, connection_.screen().height_in_pixels};
    return {scale_, all.front().rect.y, all.front().rect.bottom()};
}

std::optional<Rect> X11Screens::cutoutBand(const PixelRect& pixels) {
    for (const auto& monitor : monitors()) {
        if (!monitor.cutout || !monitor.rect.intersects(pixels))
            continue;
        const auto& cutout = *monitor.cutout;
        if (pixels.y < cutout.maxY() && pixels.bottom() > cutout.minY())
            return Rect{{static_cast<double>(monitor.rect.x), cutout.minY()},
                        {static_cast<double>(monitor.rect.width), cutout.height()}};
    }
    return std::nullopt;
}

bool X11Screens::knowsOnlyTheInset() {
    connection_.drain();
    const auto& all = monitors();
    return std::ranges::any_of(
        all, [](const Monitor& monitor) { return monitor.inset > 0 && !monitor.cutout; });
}

ScreenDescription X11Screens::describe(const Monitor& monitor) {
    const auto space = this->space();
    ScreenDescription screen;
    screen.frame = space.toFrame(monitor.rect);
    screen.safeAreaTop = monitor.inset / scale_;
    if (monitor.cutout) {
        const Rect bounds = Space::real(monitor.rect);
        const double left = bounds.minX();
        screen.auxiliaryTopLeftArea = space.toFrame(
            Rect{{left, bounds.minY()}, {monitor.cutout->minX() - left, monitor.inset}});
        screen.auxiliaryTopRightArea =
            space.toFrame(Rect{{monitor.cutout->maxX(), bounds.minY()},
                               {bounds.maxX() - monitor.cutout->maxX(), monitor.inset}});
    }
    return screen;
}

std::vector<ScreenDescription> X11Screens::screens() {
    connection_.drain();
    std::vector<ScreenDescription> result;
    for (const auto& monitor : monitors())
        result.push_back(describe(monitor));
    return result;
}

std::optional<ScreenDescription> X11Screens::mainScreen() {
    connection_.drain();
    const auto window = activeWindow_ ? activeWindow_() : 0;
    const auto& all = monitors();
    if (all.empty())
        return std::nullopt;
    if (window == 0)
        return describe(all.front());
    auto* raw = connection_.raw();
    const auto until = Connection::deadline();
    const auto place = xcb_translate_coordinates(raw, window, connection_.root(), 0, 0);
    const auto size = xcb_get_geometry(raw, window);
    const auto origin = connection_.wait<xcb_translate_coordinates_reply_t>(place, until);
    const auto extent = connection_.wait<xcb_get_geometry_reply_t>(size, until);
    if (!origin || !extent)
        return describe(all.front());
    const int x = origin->dst_x + extent->width / 2;
    const int y = origin->dst_y + extent->height / 2;
    const auto found = std::ranges::find_if(
        all, [&](const Monitor& monitor) { return monitor.rect.contains(x, y); });
    return describe(found == all.end() ? all.front() : *found);
}

Rect X11Screens::visibleFrame(const ScreenDescription& screen) {
    const auto space = this->space();
    const auto reply = connection_.wait<xcb_get_property_reply_t>(
        xcb_get_property(connection_.raw(), 0, connection_.root(), connection_.atom(Atom::workArea),
                         XCB_ATOM_CARDINAL, 0, 4),
        Connection::deadline());
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 16)
        return screen.frame;
    const auto* area = static_cast<const std::int32_t*>(xcb_get_property_value(reply.get()));
    const auto free =
        intersection(space.toPixels(screen.frame), {area[0], area[1], area[2], area[3]});
    return free.isEmpty() ? screen.frame : space.toFrame(free);
}

bool X11Screens::mainDisplayIsAsleep() {
    connection_.drain();
    if (saverActive_ || !hasDpms_)
        return saverActive_;
    const auto info = connection_.wait<xcb_dpms_info_reply_t>(xcb_dpms_info(connection_.raw()),
                                                              Connection::deadline());
    return info && info->state != 0 && info->power_level != XCB_DPMS_DPMS_MODE_ON;
}

} // namespace orrivane::x11
