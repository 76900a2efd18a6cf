#pragma once

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace orrivane::e2e {

/// What a test that cannot run here says when it is skipped. Where ORRIVANE_REQUIRE_DESKTOP is set,
/// as ./test does once it has installed everything, such a test fails: throws std::runtime_error.
inline std::string reasonToSkip(std::string reason) {
    if (std::getenv("ORRIVANE_REQUIRE_DESKTOP") != nullptr)
        throw std::runtime_error(reason);
    return reason;
}

} // namespace orrivane::e2e
