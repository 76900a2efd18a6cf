#pragma once

#include <Orrivane/support/ObserverList.h>

#include <linux/x11/Atoms.h>
#include <linux/x11/Reply.h>

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace orrivane::x11 {

using Deadline = std::chrono::steady_clock::time_point;

/// The port's own connection to the X server. Every request is sent so that its error comes back to
/// the caller or is dropped, none ends the program, and no wait for a reply is longer than
/// `answerLimit`: a server that is grabbed or hung makes reads fail instead.
class Connection {
  public:
    /// What is heard of the root window: one mask for all parts of the program, because each
    /// selection replaces the one before.
    static constexpr std::uint32_t rootEvents = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY |
                                                XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                                XCB_EVENT_MASK_PROPERTY_CHANGE;
    /// The longest wait for the server in one go.
    static constexpr std::chrono::milliseconds answerLimit{250};

    /// Connects, checks the extensions and begins to listen to the root window. Null on failure;
    /// `problem` is then one sentence that says what is missing and what to do. A null `display`
    /// means the environment's.
    static std::unique_ptr<Connection> open(const char* display, std::string& problem);

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    [[nodiscard]] xcb_connection_t* raw() const { return connection_; }
    [[nodiscard]] std::uint32_t root() const { return screen_->root; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] const xcb_setup_t& setup() const { return *xcb_get_setup(connection_); }
    [[nodiscard]] xcb_atom_t atom(Atom name) const {
        return atoms_[static_cast<std::size_t>(name)];
    }
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(connection_); }
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(connection_) != 0; }

    /// The client that made a resource, as the bits that all its resources share.
    [[nodiscard]] std::uint32_t clientOf(std::uint32_t resource) const {
        return resource & ~setup().resource_id_mask;
    }

    [[nodiscard]] static Deadline deadline() {
        return std::chrono::steady_clock::now() + answerLimit;
    }

    /// The reply to a request already sent; null on an error, past the deadline, or while the
    /// server has left an earlier wait without an answer.
    template <typename T, typename Cookie>
    Owned<T> wait(Cookie cookie, Deadline until) {
        return Owned<T>(static_cast<T*>(waitFor(cookie.sequence, until)));
    }
    /// Whether a checked request without a reply succeeded; a round trip.
    bool succeeded(xcb_void_cookie_t cookie, Deadline until);
    /// Everything sent so far has been processed; false when that took too long.
    bool synchronize(Deadline until);
    /// For a checked request whose failure changes nothing.
    void ignore(xcb_void_cookie_t cookie) { xcb_discard_reply(connection_, cookie.sequence); }
    /// Forgets a reply that is not wanted any more.
    void discard(unsigned sequence) { xcb_discard_reply(connection_, sequence); }

    /// False from a wait that ended without an answer until the server answers again.
    [[nodiscard]] bool isResponsive();
    /// How many waits have ended without an answer so far; tells a missing answer from an error.
    [[nodiscard]] std::uint64_t unanswered() const { return unanswered_; }

    /// Hands every event that has arrived to the handlers, in order; sends nothing.
    void drain();
    Subscription onEvent(std::function<void(const xcb_generic_event_t&)> handler) {
        return handlers_.add(std::move(handler));
    }
    /// `queued` is called when a wait or a flush may have left events where the descriptor does not
    /// show them.
    void setQueuedHandler(std::function<void()> queued) { queued_ = std::move(queued); }
    void flush();

    [[nodiscard]] std::uint8_t firstEvent(xcb_extension_t* extension) const;
    [[nodiscard]] bool has(xcb_extension_t* extension) const;

  private:
    Connection(xcb_connection_t* connection, int screenNumber);
    [[nodiscard]] std::string missingExtensions();
    [[nodiscard]] bool internAtoms(int screenNumber);
    void* waitFor(unsigned sequence, Deadline until);
    [[nodiscard]] std::pair<bool, void*> poll(unsigned sequence, Deadline until);
    void beginProbe();

    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    std::array<xcb_atom_t, atomCount> atoms_{};
    // Sent when a wait failed; its reply says that the server answers again. 0: none under way.
    unsigned probe_ = 0;
    std::uint64_t unanswered_ = 0;
    ObserverList<const xcb_generic_event_t&> handlers_;
    std::function<void()> queued_;
};

} // namespace orrivane::x11
