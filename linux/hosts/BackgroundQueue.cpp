#include <linux/hosts/BackgroundQueue.h>

#include <csignal>
#include <utility>

namespace orrivane {

BackgroundQueue::~BackgroundQueue() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    changed_.notify_one();
    if (thread_.joinable())
        thread_.join();
}

void BackgroundQueue::post(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(work));
    }
    changed_.notify_one();
    if (thread_.joinable())
        return;
    // Signals are for the main thread.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    thread_ = std::thread([this] { run(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void BackgroundQueue::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ends_ || !waiting_.empty(); });
        if (ends_)
            return;
        auto work = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        work();
        work = nullptr;
        lock.lock();
    }
}

} // namespace orrivane
