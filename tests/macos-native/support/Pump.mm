#import "Pump.h"

#import <AppKit/AppKit.h>

#include <chrono>

namespace orrivane {

namespace {

constexpr NSTimeInterval turn = 0.01; // seconds

void runOneTurn() {
    if (NSApp == nil) {
        // Without timers or sources it returns at once.
        if (CFRunLoopRunInMode(kCFRunLoopDefaultMode, turn, true) == kCFRunLoopRunFinished)
            [NSThread sleepForTimeInterval:turn];
        return;
    }
    NSEvent* event = [NSApp nextEventMatchingMask:NSEventMaskAny
                                        untilDate:[NSDate dateWithTimeIntervalSinceNow:turn]
                                           inMode:NSDefaultRunLoopMode
                                          dequeue:YES];
    if (event != nil)
        [NSApp sendEvent:event];
}

} // namespace

double steadySeconds() {
    using Seconds = std::chrono::duration<double>;
    return Seconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool pumpUntil(const std::function<bool()>& holds, double bound) {
    const double end = steadySeconds() + bound;
    while (!holds()) {
        if (steadySeconds() >= end)
            return false;
        @autoreleasepool {
            runOneTurn();
        }
    }
    return true;
}

} // namespace orrivane
