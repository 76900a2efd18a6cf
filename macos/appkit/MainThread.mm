#import <macos/appkit/MainThread.h>

#import <Foundation/Foundation.h>

#include <utility>

namespace orrivane {

void onMainThread(std::function<void()> work) {
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      @autoreleasepool {
          callOut(work);
      }
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

void nowOrOnMainThread(std::function<void()> work) {
    if (NSThread.isMainThread)
        callOut(work);
    else
        onMainThread(std::move(work));
}

} // namespace orrivane
