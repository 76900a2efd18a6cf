#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <xcb/record.h>
#include <xcb/xcb.h>

namespace orrivane::bench {

/// Counts what one X client sends, as the server itself records it for two other connections.
class RequestCounter {
  public:
    /// Records the client whose resources share the bits `client`. Throws std::runtime_error
    /// without RECORD.
    RequestCounter(const std::string& display, std::uint32_t client);
    ~RequestCounter();
    RequestCounter(const RequestCounter&) = delete;
    RequestCounter& operator=(const RequestCounter&) = delete;

    /// Requests since the last call, or since the counter was made. `client` is the recorded one's
    /// connection: a last question sent on it marks the end, and is not counted.
    std::size_t take(xcb_connection_t* client);

  private:
    /// How many requests `reply` holds before the mark; whether the mark is among them.
    struct Tally {
        std::size_t count = 0;
        bool marked = false;
    };
    [[nodiscard]] static Tally tally(const xcb_record_enable_context_reply_t& reply);

    xcb_connection_t* control_;
    xcb_connection_t* data_;
    xcb_record_context_t context_ = 0;
    xcb_record_enable_context_cookie_t enabled_{};
};

} // namespace orrivane::bench
