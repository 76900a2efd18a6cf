#include <Orrivane/support/Task.h>

namespace orrivane {

TaskHandle start(MainLoop& loop, Task<void> task) {
    auto context = std::make_shared<TaskContext>(loop);
    const auto frame = task.release();
    frame.promise().context = context.get();
    context->adopt(frame, [frame] { frame.promise().take(); });
    TaskHandle handle(context);
    loop.post([continuation = Continuation(std::move(context), frame)]() mutable {
        continuation.resume();
    });
    return handle;
}

} // namespace orrivane
