#include <linux/x11/PressWatcher.h>

#include <xcb/xinput.h>

#include <memory>
#include <utility>

namespace orrivane::x11 {

namespace {

constexpr std::uint32_t lastPlainButton = 3; // those after it are the wheel

// The first version in which raw events come whoever holds the pointer.
constexpr std::uint16_t wantedMajor = 2;
constexpr std::uint16_t wantedMinor = 2;

} // namespace

PressWatcher::PressWatcher(Connection& connection, MainLoop& loop)
    : connection_(connection)
    , loop_(loop)
    , self_(std::make_shared<PressWatcher*>(this)) {
    // Long before anybody watches, so that nobody waits for the answer.
    xcb_prefetch_extension_data(connection.raw(), &xcb_input_id);
}

void PressWatcher::prepare() {
    if (std::exchange(prepared_, true) || !connection_.has(&xcb_input_id))
        return;
    auto* raw = connection_.raw();
    const auto version = connection_.wait<xcb_input_xi_query_version_reply_t>(
        xcb_input_xi_query_version(raw, wantedMajor, wantedMinor), Connection::deadline());
    if (!version || version->major_version < wantedMajor ||
        (version->major_version == wantedMajor && version->minor_version < wantedMinor))
        return;
    opcode_ = xcb_get_extension_data(raw, &xcb_input_id)->major_opcode;
    events_ = connection_.onEvent([this](const xcb_generic_event_t& event) { handle(event); });
}

Subscription PressWatcher::watch(std::function<void()> pressed) {
    prepare();
    auto watcher = std::make_shared<Subscription>(watchers_.add(std::move(pressed)));
    select(true);
    return Subscription([this, watcher] {
        watcher->reset();
        select(watchers_.count() > 0);
    });
}

void PressWatcher::select(bool watching) {
    if (opcode_ == 0)
        return;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection = {{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                   watching ? static_cast<std::uint32_t>(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS)
                            : 0U};
    connection_.ignore(xcb_input_xi_select_events_checked(connection_.raw(), connection_.root(), 1,
                                                          &selection.head));
    connection_.flush();
}

void PressWatcher::handle(const xcb_generic_event_t& event) {
    constexpr unsigned sentMask = 0x7f;
    if ((event.response_type & sentMask) != XCB_GE_GENERIC)
        return;
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != opcode_ || generic.event_type != XCB_INPUT_RAW_BUTTON_PRESS)
        return;
    const auto& press = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (press.detail < 1 || press.detail > lastPlainButton)
        return;
    loop_.post([weak = std::weak_ptr(self_)] {
        if (const auto self = weak.lock())
            (*self)->watchers_.notify();
    });
}

} // namespace orrivane::x11
