#include <linux/x11/Redirection.h>

#include <xcb/composite.h>

namespace orrivane::x11 {

bool Redirection::contains(std::uint32_t window, std::uint64_t serial) const {
    const auto found = serials_.find(window);
    return found != serials_.end() && found->second == serial;
}

void Redirection::begin(std::uint32_t window, std::uint64_t serial) {
    serials_[window] = serial;
    connection_.ignore(xcb_composite_redirect_window_checked(connection_.raw(), window,
                                                             XCB_COMPOSITE_REDIRECT_AUTOMATIC));
    connection_.flush();
}

void Redirection::end(std::uint32_t window) {
    if (serials_.erase(window) == 0)
        return;
    connection_.ignore(xcb_composite_unredirect_window_checked(connection_.raw(), window,
                                                               XCB_COMPOSITE_REDIRECT_AUTOMATIC));
}

} // namespace orrivane::x11
