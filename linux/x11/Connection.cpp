#include <linux/x11/Connection.h>

#include <poll.h>
#include <xcb/composite.h>
#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/shape.h>
#include <xcb/xcbext.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <utility>

namespace orrivane::x11 {

namespace {

// At the start nothing is shown yet that a longer wait could hold up.
constexpr std::chrono::seconds startLimit{5};

xcb_screen_t* screenNumber(xcb_connection_t* connection, int number) {
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; roots.rem > 1 && number > 0; --number)
        xcb_screen_next(&roots);
    return roots.rem > 0 ? roots.data : nullptr;
}

int millisecondsUntil(Deadline until) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

} // namespace

std::unique_ptr<Connection> Connection::open(const char* display, std::string& problem) {
    int number = 0;
    auto* raw = xcb_connect(display, &number);
    if (xcb_connection_has_error(raw) != 0 || !screenNumber(raw, number)) {
        xcb_disconnect(raw);
        problem = "No X server answers at the display '" +
                  std::string(display ? display : "of the environment") +
                  "'; start Orrivane inside an X11 session, or set DISPLAY to one.";
        return nullptr;
    }
    std::unique_ptr<Connection> connection(new Connection(raw, number));
    if (const auto missing = connection->missingExtensions(); !missing.empty()) {
        problem = "The X server lacks the extension " + missing +
                  "; enable it in the server's configuration (Section \"Extensions\") and start "
                  "the session again.";
        return nullptr;
    }
    if (!connection->internAtoms(number)) {
        problem = "The X server does not answer; another program may hold it grabbed: end that "
                  "program and start Orrivane again.";
        return nullptr;
    }
    connection->ignore(xcb_change_window_attributes_checked(raw, connection->root(),
                                                            XCB_CW_EVENT_MASK, &rootEvents));
    connection->flush();
    return connection;
}

Connection::Connection(xcb_connection_t* connection, int number)
    : connection_(connection)
    , screen_(screenNumber(connection, number)) {}

Connection::~Connection() {
    xcb_disconnect(connection_);
}

bool Connection::has(xcb_extension_t* extension) const {
    const auto* data = xcb_get_extension_data(connection_, extension);
    return data && data->present != 0;
}

std::uint8_t Connection::firstEvent(xcb_extension_t* extension) const {
    const auto* data = xcb_get_extension_data(connection_, extension);
    return data ? data->first_event : std::uint8_t{0};
}

std::string Connection::missingExtensions() {
    const std::array<std::pair<xcb_extension_t*, const char*>, 5> wanted{{
        {&xcb_composite_id, "Composite"},
        {&xcb_randr_id, "RANDR"},
        {&xcb_shape_id, "SHAPE"},
        {&xcb_res_id, "X-Resource"},
        {&xcb_test_id, "XTEST"},
    }};
    for (const auto& [extension, name] : wanted)
        xcb_prefetch_extension_data(connection_, extension);
    std::string missing;
    for (const auto& [extension, name] : wanted)
        if (!has(extension))
            missing += (missing.empty() ? "" : ", ") + std::string(name);
    if (!missing.empty())
        return missing;
    // Servers answer these extensions' requests only to clients that gave their version.
    const auto until = std::chrono::steady_clock::now() + startLimit;
    const auto composite = xcb_composite_query_version(connection_, 0, 4);
    const auto randr = xcb_randr_query_version(connection_, 1, 5);
    if (!wait<xcb_composite_query_version_reply_t>(composite, until))
        return "Composite";
    const auto version = wait<xcb_randr_query_version_reply_t>(randr, until);
    if (!version || (version->major_version == 1 && version->minor_version < 5))
        return "RANDR 1.5";
    return {};
}

bool Connection::internAtoms(int screenNumberOfDisplay) {
    std::array<xcb_intern_atom_cookie_t, atomCount> cookies{};
    for (std::size_t i = 0; i < atomCount; ++i) {
        std::string name(atomNames[i]);
        if (name.back() == '#')
            name.replace(name.size() - 1, 1, std::to_string(screenNumberOfDisplay));
        cookies[i] =
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    }
    const auto until = std::chrono::steady_clock::now() + startLimit;
    for (std::size_t i = 0; i < atomCount; ++i) {
        const auto reply = wait<xcb_intern_atom_reply_t>(cookies[i], until);
        if (!reply)
            return false;
        atoms_[i] = reply->atom;
    }
    return true;
}

void* Connection::waitFor(unsigned sequence, Deadline until) {
    const bool responsive = isResponsive();
    const auto [answered, reply] =
        responsive ? poll(sequence, until) : std::pair<bool, void*>{false, nullptr};
    if (!answered) {
        ++unanswered_;
        discard(sequence);
        beginProbe();
    }
    if (queued_)
        queued_();
    return reply;
}

// Whether an answer came, and the reply unless it was an error.
std::pair<bool, void*> Connection::poll(unsigned sequence, Deadline until) {
    xcb_flush(connection_);
    for (;;) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(connection_, sequence, &reply, &error) != 0) {
            const Owned<xcb_generic_error_t> owned(error);
            return {true, reply};
        }
        const int left = millisecondsUntil(until);
        pollfd descriptor{xcb_get_file_descriptor(connection_), POLLIN, 0};
        if (left == 0 || ::poll(&descriptor, 1, left) == 0)
            return {false, nullptr};
    }
}

// Writing reads as well, so that neither side of a full socket waits for the other.
void Connection::flush() {
    xcb_flush(connection_);
    if (queued_)
        queued_();
}

void Connection::beginProbe() {
    if (probe_ != 0)
        return;
    probe_ = xcb_get_input_focus_unchecked(connection_).sequence;
    xcb_flush(connection_);
}

bool Connection::isResponsive() {
    if (probe_ == 0)
        return true;
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (xcb_poll_for_reply(connection_, probe_, &reply, &error) == 0)
        return false;
    const Owned<void> ownedReply(reply);
    const Owned<xcb_generic_error_t> ownedError(error);
    probe_ = 0;
    return true;
}

bool Connection::succeeded(xcb_void_cookie_t cookie, Deadline until) {
    // The reply of a later request arrives after the error, if there is one.
    if (!synchronize(until)) {
        discard(cookie.sequence);
        return false;
    }
    return Owned<xcb_generic_error_t>(xcb_request_check(connection_, cookie)) == nullptr;
}

bool Connection::synchronize(Deadline until) {
    return wait<xcb_get_input_focus_reply_t>(xcb_get_input_focus_unchecked(connection_), until) !=
           nullptr;
}

void Connection::drain() {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)})
        if (event->response_type != 0) // errors of requests whose outcome nobody asked for
            handlers_.notify(*event);
}

} // namespace orrivane::x11
