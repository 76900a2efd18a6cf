#import <macos/appkit/RunLoopMainLoop.h>

#import <macos/appkit/MainThread.h>

#import <Foundation/Foundation.h>

#include <algorithm>
#include <deque>
#include <mutex>
#include <utility>

namespace orrivane {

/// Work in the order of posting, one item a turn. Work that runs a loop of its own, as a dialog
/// does, holds up neither what was posted before it began nor what comes after.
class RunLoopMainLoop::Queue : public std::enable_shared_from_this<Queue> {
  public:
    void post(std::function<void()> work) {
        const std::lock_guard lock(mutex_);
        if (closed_)
            return;
        waiting_.push_back(std::move(work));
        scheduleTurn();
    }

    void close() {
        std::deque<std::function<void()>> dropped; // dies after the lock: it may still post
        const std::lock_guard lock(mutex_);
        closed_ = true;
        dropped.swap(waiting_);
    }

  private:
    // Never more than one: a nested loop does not run what the outer one has taken already.
    void scheduleTurn() {
        if (waiting_.empty() || std::exchange(turnIsScheduled_, true))
            return;
        onMainThread([weak = weak_from_this()] {
            if (const auto queue = weak.lock())
                callOut(queue->beginTurn());
        });
    }

    std::function<void()> beginTurn() {
        const std::lock_guard lock(mutex_);
        turnIsScheduled_ = false;
        if (waiting_.empty())
            return {};
        auto work = std::move(waiting_.front());
        waiting_.pop_front();
        scheduleTurn();
        return work;
    }

    std::mutex mutex_;
    std::deque<std::function<void()>> waiting_;
    bool turnIsScheduled_ = false;
    bool closed_ = false;
};

struct RunLoopMainLoop::Timers {
    NSHashTable<NSTimer*>* running = [NSHashTable weakObjectsHashTable];

    Subscription start(double interval, double tolerance, bool repeats,
                       std::function<void()> action) {
        const auto shared = std::make_shared<std::function<void()>>(std::move(action));
        NSTimer* timer = [NSTimer timerWithTimeInterval:interval
                                                repeats:repeats
                                                  block:^(NSTimer*) {
                                                    // The action may end its own timer.
                                                    const auto held = shared;
                                                    @autoreleasepool {
                                                        callOut(*held);
                                                    }
                                                  }];
        timer.tolerance = tolerance;
        [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
        [running addObject:timer];
        return Subscription([timer] { [timer invalidate]; });
    }
};

RunLoopMainLoop::RunLoopMainLoop()
    : queue_(std::make_shared<Queue>())
    , timers_(std::make_unique<Timers>()) {}

RunLoopMainLoop::~RunLoopMainLoop() {
    queue_->close();
    for (NSTimer* timer in timers_->running.allObjects)
        [timer invalidate];
}

void RunLoopMainLoop::post(std::function<void()> work) {
    queue_->post(std::move(work));
}

double RunLoopMainLoop::now() const {
    return CFAbsoluteTimeGetCurrent();
}

Subscription RunLoopMainLoop::repeatingTimer(double interval, double tolerance,
                                             std::function<void()> action) {
    return timers_->start(interval, tolerance, true, std::move(action));
}

Subscription RunLoopMainLoop::wakeUp(double delay, std::function<void()> action) {
    return timers_->start(std::max(delay, 0.0), 0, false, std::move(action));
}

} // namespace orrivane
