#include <Orrivane/SqueezeEngine.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace orrivane {

namespace {

constexpr std::int64_t belowSpacing = 2;
constexpr std::int64_t smallestPadding = 2;

} // namespace

std::int64_t SqueezeEngine::padding(std::int64_t spacing) {
    if (spacing < std::numeric_limits<std::int64_t>::min() + belowSpacing)
        std::abort();
    return std::max(smallestPadding, spacing - belowSpacing);
}

} // namespace orrivane
