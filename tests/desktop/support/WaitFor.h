#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace orrivane::e2e {

/// Long enough for a loaded machine; what works takes a fraction of it.
inline constexpr std::chrono::milliseconds defaultBound{10000};

/// Asks `holds` until it is true or `bound` has passed. The failure names `what`, so that
/// `ASSERT_TRUE(waitFor("the menu opens", ...))` needs no further message.
testing::AssertionResult waitFor(const std::string& what, const std::function<bool()>& holds,
                                 std::chrono::milliseconds bound = defaultBound);

/// True when `holds` is true at every look during `span`; for what must not happen.
testing::AssertionResult staysTrue(const std::string& what, const std::function<bool()>& holds,
                                   std::chrono::milliseconds span);

/// Lets other processes run for one interval of polling.
void pollPause();

/// Asks `find` until it yields a value; throws std::runtime_error naming `what` after `bound`.
template <class T>
T waitForValue(const std::string& what, const std::function<std::optional<T>()>& find,
               std::chrono::milliseconds bound = defaultBound) {
    std::optional<T> found;
    const testing::AssertionResult result =
        waitFor(what, [&] { return (found = find()).has_value(); }, bound);
    if (!result)
        throw std::runtime_error(result.message());
    return *std::move(found);
}

} // namespace orrivane::e2e
