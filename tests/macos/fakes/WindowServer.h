#pragma once

#include <tests/macos/fakes/Values.h>

namespace orrivane::fakes {

/// What CGWindowListCopyWindowInfo answers from. Its lists are the windows in their order.
struct WindowServer {
    struct Window {
        Any entry; ///< whatever a test wants listed
        bool isOnscreen = true;
        bool isDesktopElement = false;
    };

    std::vector<Window> windows;
    bool isUnreachable = false; ///< as outside a graphical session: no list at all

    static WindowServer& shared();
};

/// A well-formed entry.
Any windowEntry(std::int64_t layer, std::int64_t number, const Any& bounds, bool isOnscreen);

} // namespace orrivane::fakes
