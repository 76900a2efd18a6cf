#pragma once

#include <chrono>

namespace orrivane {

/// Seconds since some moment in the past; never set back.
inline double monotonicNow() {
    using Seconds = std::chrono::duration<double>;
    return Seconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace orrivane
