#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace orrivane {

/// The base of every contract suite. A `World` is default-constructible, makes one body of the port
/// and can do to the port's surroundings what the suite's own header lists. All worlds offer
/// `bool pumpUntil(predicate)`: runs the loop until the predicate holds, false after a bound.
///
/// A world operation that gives a Boolean answers false when this body's surroundings cannot be
/// brought into that state; the check is then skipped and says why. A world may have a
/// `std::optional<std::string> whyUnavailable()`: a reason skips the whole suite.
template <typename World>
class Contract : public ::testing::Test {
  protected:
    World world;

    void SetUp() override {
        if constexpr (requires { world.whyUnavailable(); }) {
            const std::optional<std::string> reason = world.whyUnavailable();
            if (reason)
                GTEST_SKIP() << *reason;
        }
    }
};

} // namespace orrivane
