#include <linux/x11/SingleInstance.h>

#include <unistd.h>
#include <utility>

namespace orrivane::x11 {

SingleInstance::SingleInstance(Connection& connection, MainLoop& loop)
    : connection_(connection)
    , loop_(loop)
    , self_(std::make_shared<SingleInstance*>(this)) {}

SingleInstance::~SingleInstance() {
    if (window_ == 0)
        return;
    connection_.ignore(xcb_destroy_window_checked(connection_.raw(), window_));
    connection_.flush();
}

std::optional<std::uint32_t> SingleInstance::owner() {
    const auto reply = connection_.wait<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection_.raw(), connection_.atom(Atom::instanceSelection)),
        Connection::deadline());
    if (!reply)
        return std::nullopt;
    return reply->owner == window_ ? 0 : reply->owner;
}

std::optional<std::int32_t> SingleInstance::runningElsewhere() {
    const auto window = owner().value_or(0);
    if (window == 0)
        return std::nullopt;
    const auto reply = connection_.wait<xcb_get_property_reply_t>(
        xcb_get_property(connection_.raw(), 0, window, connection_.atom(Atom::windowPid),
                         XCB_ATOM_CARDINAL, 0, 1),
        Connection::deadline());
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != 4)
        return 0;
    return static_cast<std::int32_t>(
        *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get())));
}

bool SingleInstance::claim(std::function<void(InstanceCommand)> commanded) {
    if (owner() != std::optional<std::uint32_t>(0))
        return false;
    auto* raw = connection_.raw();
    window_ = xcb_generate_id(raw);
    connection_.ignore(xcb_create_window_checked(raw, 0, window_, connection_.root(), -1, -1, 1, 1,
                                                 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                                                 XCB_COPY_FROM_PARENT, 0, nullptr));
    const auto process = static_cast<std::uint32_t>(getpid());
    connection_.ignore(xcb_change_property_checked(raw, XCB_PROP_MODE_REPLACE, window_,
                                                   connection_.atom(Atom::windowPid),
                                                   XCB_ATOM_CARDINAL, 32, 1, &process));
    connection_.ignore(xcb_set_selection_owner_checked(
        raw, window_, connection_.atom(Atom::instanceSelection), XCB_CURRENT_TIME));
    // Two launches at the same moment: the later one owns it, and the earlier one sees that here
    // or, a moment later, by the loss.
    const auto reply = connection_.wait<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(raw, connection_.atom(Atom::instanceSelection)),
        Connection::deadline());
    if (!reply || reply->owner != window_)
        return false;
    commanded_ = std::move(commanded);
    events_ = connection_.onEvent([this](const xcb_generic_event_t& event) { handle(event); });
    return true;
}

bool SingleInstance::tell(InstanceCommand command) {
    const auto target = owner();
    if (!target || *target == 0)
        return false;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = *target;
    message.type = connection_.atom(Atom::instanceCommand);
    message.data.data32[0] = static_cast<std::uint32_t>(command);
    return connection_.succeeded(xcb_send_event_checked(connection_.raw(), 0, *target,
                                                        XCB_EVENT_MASK_NO_EVENT,
                                                        reinterpret_cast<const char*>(&message)),
                                 Connection::deadline());
}

void SingleInstance::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t sentByAClient = 0x80;
    const auto type = event.response_type & ~sentByAClient;
    if (type == XCB_SELECTION_CLEAR) {
        const auto& cleared = reinterpret_cast<const xcb_selection_clear_event_t&>(event);
        if (cleared.owner == window_)
            pass(InstanceCommand::quit);
        return;
    }
    if (type != XCB_CLIENT_MESSAGE)
        return;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.window != window_ || message.format != 32 ||
        message.type != connection_.atom(Atom::instanceCommand))
        return;
    const auto command = static_cast<InstanceCommand>(message.data.data32[0]);
    if (command == InstanceCommand::open || command == InstanceCommand::quit)
        pass(command);
}

void SingleInstance::pass(InstanceCommand command) {
    loop_.post([weak = std::weak_ptr(self_), command] {
        if (const auto self = weak.lock(); self && (*self)->commanded_)
            (*self)->commanded_(command);
    });
}

} // namespace orrivane::x11
