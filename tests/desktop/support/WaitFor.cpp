#include "WaitFor.h"

#include <poll.h>

namespace orrivane::e2e {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int pollIntervalMilliseconds = 10;

} // namespace

void pollPause() {
    poll(nullptr, 0, pollIntervalMilliseconds);
}

testing::AssertionResult waitFor(const std::string& what, const std::function<bool()>& holds,
                                 std::chrono::milliseconds bound) {
    const auto deadline = Clock::now() + bound;
    for (;;) {
        // The look after the deadline counts: a starved test must not fail for its own delay.
        const bool late = Clock::now() >= deadline;
        if (holds())
            return testing::AssertionSuccess();
        if (late) {
            return testing::AssertionFailure()
                   << "waited " << bound.count() << " ms in vain: " << what;
        }
        pollPause();
    }
}

testing::AssertionResult staysTrue(const std::string& what, const std::function<bool()>& holds,
                                   std::chrono::milliseconds span) {
    const auto start = Clock::now();
    do {
        if (!holds()) {
            const auto after =
                std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
            return testing::AssertionFailure()
                   << "no longer true after " << after.count() << " ms: " << what;
        }
        pollPause();
    } while (Clock::now() - start < span);
    return testing::AssertionSuccess();
}

} // namespace orrivane::e2e
