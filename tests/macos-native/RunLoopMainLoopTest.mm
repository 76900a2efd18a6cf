#import <macos/appkit/RunLoopMainLoop.h>

#import "support/Pump.h"

#include <tests/support/contracts/MainLoopContract.h>

#import <Foundation/Foundation.h>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace orrivane {
namespace {

struct RunLoopWorld {
    std::unique_ptr<RunLoopMainLoop> body = std::make_unique<RunLoopMainLoop>();

    MainLoop& loop() { return *body; }
    [[nodiscard]] double elapsed() const { return steadySeconds(); }
    void block(double seconds) {
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    }
    void destroyLoop() {
        @autoreleasepool {
            body.reset();
        }
    }
    template <typename Condition>
    bool pumpUntil(Condition condition) {
        return orrivane::pumpUntil(condition);
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(RunLoop, MainLoopContract, RunLoopWorld);

NSRunLoopMode const nestedMode = @"OrrivaneNestedMode";

// What a sheet or an alert does: runs the loop in a mode of its own, from inside work of the loop.
void runNested(const std::function<bool()>& ended) {
    NSDate* giveUp = [NSDate dateWithTimeIntervalSinceNow:10];
    while (!ended() && giveUp.timeIntervalSinceNow > 0)
        CFRunLoopRunInMode((__bridge CFStringRef)nestedMode, 0.01, true);
}

class RunLoopMainLoopTest : public testing::Test {
  protected:
    // As AppKit does with the modes of its dialogs.
    RunLoopMainLoopTest() {
        CFRunLoopAddCommonMode(CFRunLoopGetMain(), (__bridge CFStringRef)nestedMode);
    }
    RunLoopMainLoop loop;
};

TEST_F(RunLoopMainLoopTest, runsPostedWorkAndTimersInsideANestedLoop) {
    int firings = 0;
    bool posted = false;
    bool left = false;
    const auto timer = loop.repeatingTimer(0.01, 0, [&] { ++firings; });
    loop.post([&] {
        loop.post([&] { posted = true; });
        runNested([&] { return firings >= 2 && posted; });
        left = true;
    });
    ASSERT_TRUE(pumpUntil([&] { return left; }, 20));
    EXPECT_GE(firings, 2);
    EXPECT_TRUE(posted);
}

TEST_F(RunLoopMainLoopTest, workPostedByAnotherThreadRunsOnTheMainOne) {
    bool ran = false;
    bool onMain = false;
    std::thread other([&] {
        loop.post([&] {
            onMain = NSThread.isMainThread;
            ran = true;
        });
    });
    other.join();
    ASSERT_TRUE(pumpUntil([&] { return ran; }));
    EXPECT_TRUE(onMain);
}

} // namespace
} // namespace orrivane
