#include <linux/x11/X11Workspace.h>

#include <Orrivane/CommandLine.h>

#include <utility>

namespace orrivane::x11 {

X11Workspace::X11Workspace(Connection& connection, MainLoop& loop, X11Screens& screens,
                           Toolkit toolkit)
    : connection_(connection)
    , loop_(loop)
    , toolkit_(std::move(toolkit))
    , events_(connection.onEvent([this](const xcb_generic_event_t& event) { handle(event); }))
    , screenChanges_(screens.onChange([this] { screensMayHaveChanged(); }))
    , blanks_(screens.onBlank([this](bool blanked) {
        announce(blanked ? SystemNotification::screensDidSleep
                         : SystemNotification::screensDidWake);
    }))
    , self_(std::make_shared<X11Workspace*>(this)) {}

Subscription X11Workspace::observe(SystemNotification notification,
                                   std::function<void()> notified) {
    return observers_.at(static_cast<std::size_t>(notification)).add(std::move(notified));
}

VersionStrings X11Workspace::versionStrings() {
    return {std::string(CommandLine::version()), std::string(CommandLine::version())};
}

std::uint32_t X11Workspace::activeWindow() {
    connection_.drain();
    if (activeKnown_)
        return activeWindow_;
    const auto reply = connection_.wait<xcb_get_property_reply_t>(
        xcb_get_property(connection_.raw(), 0, connection_.root(),
                         connection_.atom(Atom::activeWindow), XCB_ATOM_WINDOW, 0, 1),
        Connection::deadline());
    if (!reply)
        return 0;
    activeKnown_ = true;
    activeWindow_ = 0;
    if (reply->format == 32 && xcb_get_property_value_length(reply.get()) == 4)
        activeWindow_ = *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return activeWindow_;
}

void X11Workspace::machineSleeps(bool goingToSleep) {
    announce(goingToSleep ? SystemNotification::willSleep : SystemNotification::didWake);
}

void X11Workspace::handle(const xcb_generic_event_t& event) {
    if (event.response_type != XCB_PROPERTY_NOTIFY)
        return;
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window != connection_.root() ||
        property.atom != connection_.atom(Atom::activeWindow))
        return;
    activeKnown_ = false;
    if (!std::exchange(checkPosted_, true))
        loop_.post(later(&X11Workspace::activeWindowMayHaveChanged));
}

// A switch passes through "no window" first; only another client's window is another application.
// While there was none for longer than a turn, the bar was the dock's: whoever comes next is told.
void X11Workspace::activeWindowMayHaveChanged() {
    checkPosted_ = false;
    const auto window = activeWindow();
    const auto client = window == 0 ? 0 : connection_.clientOf(window);
    if (client == std::exchange(activeClient_, client) || client == 0)
        return;
    observers_.at(static_cast<std::size_t>(SystemNotification::didActivateApplication)).notify();
}

void X11Workspace::screensMayHaveChanged() {
    screenTimer_ = loop_.wakeUp(screenQuiet, [this] {
        screenTimer_.reset();
        announce(SystemNotification::didChangeScreenParameters);
    });
}

void X11Workspace::announce(SystemNotification notification) {
    loop_.post([weak = std::weak_ptr(self_), notification] {
        if (const auto self = weak.lock())
            (*self)->observers_.at(static_cast<std::size_t>(notification)).notify();
    });
}

std::function<void()> X11Workspace::later(void (X11Workspace::*handler)()) {
    return [weak = std::weak_ptr(self_), handler] {
        if (const auto self = weak.lock())
            ((*self)->*handler)();
    };
}

} // namespace orrivane::x11
