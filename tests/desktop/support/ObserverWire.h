#pragma once

#include "Observer.h"

#include <cstdlib>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

namespace orrivane::e2e {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, FreeReply>;

/// The connection beneath an Observer.
struct Observer::Wire {
    xcb_connection_t* connection = nullptr;
    xcb_screen_t* screen = nullptr;
    std::map<std::string, xcb_atom_t> atoms;

    /// Waits for one reply; an X error becomes an empty pointer, a lost connection throws.
    template <class Finish, class Cookie>
    auto reply(Finish finish, Cookie cookie) {
        xcb_generic_error_t* error = nullptr;
        auto* raw = finish(connection, cookie, &error);
        std::free(error);
        Reply<std::remove_pointer_t<decltype(raw)>> result(raw);
        requireConnection();
        return result;
    }

    /// False when the server refused the request.
    bool accepted(xcb_void_cookie_t cookie) {
        const Reply<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
        requireConnection();
        return error == nullptr;
    }

    void require(xcb_void_cookie_t cookie, const std::string& what) {
        if (!accepted(cookie))
            throw std::runtime_error("the X server refused: " + what);
    }

    void requireConnection() const {
        if (xcb_connection_has_error(connection) != 0)
            throw std::runtime_error("the observer lost its X connection");
    }

    std::string atomName(xcb_atom_t atom);
    /// Up to 4096 units of a property; empty pointer when the window is gone.
    Reply<xcb_get_property_reply_t> property(xcb_window_t window, xcb_atom_t name,
                                             xcb_atom_t type = XCB_GET_PROPERTY_TYPE_ANY);
};

} // namespace orrivane::e2e
