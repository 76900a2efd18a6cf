#pragma once

#include <cstdint>

namespace orrivane {

/// Tightens the system's own spacing between status items. Stateless.
struct SqueezeEngine {
    /// The selection padding that goes with a spacing, both in the system's preference units: two
    /// less than the spacing, but at least 2. The spacing may be any number; one so low that the
    /// subtraction would overflow is a programming error and ends the program.
    static std::int64_t padding(std::int64_t spacing);
};

} // namespace orrivane
