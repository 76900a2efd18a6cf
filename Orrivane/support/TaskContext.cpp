#include <Orrivane/support/TaskContext.h>

namespace orrivane {

TaskContext::~TaskContext() {
    if (root_)
        root_.destroy();
}

void TaskContext::cancel() {
    if (std::exchange(cancelled_, true))
        return;
    observers_.notify();
}

void TaskContext::adopt(std::coroutine_handle<> root, std::function<void()> finish) {
    root_ = root;
    finish_ = std::move(finish);
}

void TaskContext::resume(std::coroutine_handle<> frame) {
    // The frame may hold the last reference to what owns this context.
    const auto self = shared_from_this();
    frame.resume();
    if (!root_ || !root_.done())
        return;
    const auto finish = std::exchange(finish_, nullptr);
    const auto root = std::exchange(root_, nullptr);
    struct Destroy {
        std::coroutine_handle<> frame;
        ~Destroy() { frame.destroy(); }
    } const destroy{root};
    finish();
}

} // namespace orrivane
