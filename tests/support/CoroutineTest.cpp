#include <tests/support/CoroutineTest.h>

namespace orrivane {

TaskHandle CoroutineTest::expectSuspends(Task<void> task) {
    auto handle = start(loop, std::move(task));
    loop.runNewestPost();
    EXPECT_TRUE(handle.isRunning()) << "the task ended without suspending";
    return handle;
}

void CoroutineTest::expectVoidCompletes(Task<void> task) {
    const auto handle = start(loop, std::move(task));
    loop.runNewestPost();
    EXPECT_FALSE(handle.isRunning()) << "the task suspended";
}

void CoroutineTest::expectVoidCompletesWithin(double seconds, Task<void> task) {
    const auto handle = start(loop, std::move(task));
    loop.advance(seconds);
    EXPECT_FALSE(handle.isRunning()) << "the task still runs after " << seconds << " s";
}

} // namespace orrivane
