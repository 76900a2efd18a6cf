#import <macos/appkit/SignalWatcher.h>

#import <macos/appkit/MainThread.h>

#import <Foundation/Foundation.h>

#include <csignal>

namespace orrivane {

namespace {

constexpr int watched[] = {SIGINT, SIGTERM, SIGHUP};

// Instead of ignoring the signal, which programs launched from here would inherit.
void doNothing(int /*number*/) {}

} // namespace

struct SignalWatcher::Sources {
    NSMutableArray<dispatch_source_t>* running = [NSMutableArray array];
};

SignalWatcher::SignalWatcher(std::function<void()> ended)
    : sources_(std::make_unique<Sources>()) {
    const auto queue = dispatch_get_global_queue(QOS_CLASS_UTILITY, 0);
    for (const int number : watched) {
        std::signal(number, doNothing);
        const auto source = dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL,
                                                   static_cast<uintptr_t>(number), 0, queue);
        dispatch_source_set_event_handler(source, ^{
          onMainThread(ended);
        });
        dispatch_activate(source);
        [sources_->running addObject:source];
    }
}

SignalWatcher::~SignalWatcher() {
    for (dispatch_source_t source in sources_->running)
        dispatch_source_cancel(source);
    for (const int number : watched)
        std::signal(number, SIG_DFL);
}

} // namespace orrivane
