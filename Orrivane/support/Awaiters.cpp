#include <Orrivane/support/Awaiters.h>

namespace orrivane {

struct Sleep::State {
    Continuation continuation;
    Sleep* sleep = nullptr; // lives in the frame the continuation keeps
    Subscription timer;
    Subscription cancellation;

    // Either end of the sleep comes here; whichever is second finds no continuation.
    void end(SleepOutcome outcome) {
        if (!continuation)
            return;
        sleep->outcome_ = outcome;
        timer.reset();
        cancellation.reset();
        auto& loop = continuation.context().loop();
        loop.post([next = std::exchange(continuation, {})]() mutable { next.resume(); });
    }
};

bool Sleep::suspend(Continuation continuation) {
    auto& context = continuation.context();
    if (context.isCancelled()) {
        outcome_ = SleepOutcome::cancelled;
        return false;
    }
    const auto state = std::make_shared<State>();
    state->continuation = std::move(continuation);
    state->sleep = this;
    state->cancellation = context.onCancel([weak = std::weak_ptr(state)] {
        if (const auto sleeping = weak.lock())
            sleeping->end(SleepOutcome::cancelled);
    });
    // The loop's timer is the one owner of the state: without it nobody could wake the task.
    state->timer = context.loop().wakeUp(seconds_, [state] { state->end(SleepOutcome::elapsed); });
    return true;
}

} // namespace orrivane
