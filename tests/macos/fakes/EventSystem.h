#pragma once

#include <tests/macos/fakes/Values.h>

#include <optional>

namespace orrivane::fakes {

/// What synthetic events arrive in.
struct EventSystem {
    std::vector<Event> arrived;
    bool refusesSources = false;
    std::optional<int> eventsLeft; ///< how many more can be made; absent: any number
    bool isPermitted = true;       ///< else what is posted disappears, and nobody is told
    bool isButtonHeld = false;
    CGEventFlags hardwareModifiers = 0; ///< held keys; a new event carries them

    static EventSystem& shared();
};

} // namespace orrivane::fakes
