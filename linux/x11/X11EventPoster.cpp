#include <linux/x11/X11EventPoster.h>

#include <xcb/xtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace orrivane::x11 {

namespace {

constexpr std::uint32_t superLeft = 0xffeb; // keysymdef.h
constexpr std::uint8_t primaryButton = 1;

std::int16_t clamped(double pixels) {
    using Limits = std::numeric_limits<std::int16_t>;
    if (!std::isfinite(pixels))
        return 0;
    return static_cast<std::int16_t>(
        std::clamp(std::round(pixels), double(Limits::min()), double(Limits::max())));
}

} // namespace

class X11EventPoster::Source : public EventSource {
  public:
    explicit Source(X11EventPoster& poster)
        : poster_(poster) {}
    ~Source() override { poster_.releaseAll(); }

  private:
    X11EventPoster& poster_;
};

class X11EventPoster::Event : public MouseEvent {
  public:
    Event(MouseEventType kind, Point at)
        : type(kind)
        , position(at) {}

    MouseEventType type;
    Point position;
    std::uint64_t flags = 0;
};

std::unique_ptr<EventSource> X11EventPoster::createSource() {
    if (connection_.isLost())
        return nullptr;
    commandKey_ = superKey();
    return commandKey_ != 0 ? std::make_unique<Source>(*this) : nullptr;
}

std::unique_ptr<MouseEvent> X11EventPoster::createMouseEvent(EventSource* source,
                                                             MouseEventType type, Point position) {
    if (connection_.isLost())
        return nullptr;
    if (!source)
        commandKey_ = superKey();
    // Without Command a drag would be a click on whatever lies there.
    if (commandKey_ == 0 && type != MouseEventType::mouseMoved)
        return nullptr;
    return std::make_unique<Event>(type, position);
}

void X11EventPoster::setFlags(MouseEvent& event, std::uint64_t flags) {
    static_cast<Event&>(event).flags = flags;
}

void X11EventPoster::post(const MouseEvent& posted) {
    const auto& event = static_cast<const Event&>(posted);
    const auto at = pixel(event.position);
    const bool command = (event.flags & commandFlag) != 0;
    if (command)
        holdCommand(true);
    // A button event happens where the pointer is.
    send(XCB_MOTION_NOTIFY, 0, at);
    if (event.type == MouseEventType::leftMouseDown) {
        send(XCB_BUTTON_PRESS, primaryButton, at);
        heldButton_ = true;
    } else if (event.type == MouseEventType::leftMouseUp) {
        send(XCB_BUTTON_RELEASE, primaryButton, at);
        heldButton_ = false;
    }
    if (!command)
        holdCommand(false);
    prepareForACrash();
    connection_.flush();
}

X11EventPoster::Pixel X11EventPoster::pixel(Point position) {
    const auto space = screens_.space();
    return {clamped(position.x * space.scale),
            clamped(position.y * space.scale + space.primaryTop)};
}

// Looked up anew for every gesture: users change their keyboard's layout.
std::uint8_t X11EventPoster::superKey() {
    const auto& setup = connection_.setup();
    const auto count = static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1);
    const auto reply = connection_.wait<xcb_get_keyboard_mapping_reply_t>(
        xcb_get_keyboard_mapping(connection_.raw(), setup.min_keycode, count),
        Connection::deadline());
    if (!reply || reply->keysyms_per_keycode == 0)
        return 0;
    const auto* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    const auto* end = symbols + xcb_get_keyboard_mapping_keysyms_length(reply.get());
    const auto* found = std::find(symbols, end, superLeft);
    if (found == end)
        return 0;
    return static_cast<std::uint8_t>(setup.min_keycode +
                                     (found - symbols) / reply->keysyms_per_keycode);
}

void X11EventPoster::holdCommand(bool down) {
    if (down == (heldKey_ != 0))
        return;
    const auto key = down ? commandKey_ : heldKey_;
    if (key == 0)
        return;
    send(down ? std::uint8_t{XCB_KEY_PRESS} : std::uint8_t{XCB_KEY_RELEASE}, key, {0, 0});
    heldKey_ = down ? key : std::uint8_t{0};
}

// The button first: let go with Command still held, a drag ends as it was meant.
void X11EventPoster::releaseAll() {
    if (heldButton_)
        send(XCB_BUTTON_RELEASE, primaryButton, {0, 0});
    heldButton_ = false;
    holdCommand(false);
    connection_.flush();
    prepareForACrash();
}

void X11EventPoster::prepareForACrash() {
    crashRelease_.reset();
    if (connection_.isLost() || (!heldButton_ && heldKey_ == 0))
        return;
    std::vector<unsigned char> requests;
    const auto append = [&](std::uint8_t type, std::uint8_t detail) {
        xcb_test_fake_input_request_t request = {};
        request.major_opcode =
            xcb_get_extension_data(connection_.raw(), &xcb_test_id)->major_opcode;
        request.minor_opcode = XCB_TEST_FAKE_INPUT;
        request.length = sizeof request / 4;
        request.type = type;
        request.detail = detail;
        request.root = connection_.root();
        const auto* bytes = reinterpret_cast<const unsigned char*>(&request);
        requests.insert(requests.end(), bytes, bytes + sizeof request);
    };
    if (heldButton_)
        append(XCB_BUTTON_RELEASE, primaryButton);
    if (heldKey_ != 0)
        append(XCB_KEY_RELEASE, heldKey_);
    crashRelease_.emplace(connection_.descriptor(), requests);
}

void X11EventPoster::send(std::uint8_t type, std::uint8_t detail, Pixel at) {
    connection_.ignore(xcb_test_fake_input_checked(
        connection_.raw(), type, detail, XCB_CURRENT_TIME, connection_.root(), at.x, at.y, 0));
}

} // namespace orrivane::x11
