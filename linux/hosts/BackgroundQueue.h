#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace orrivane {

/// One thread that does one piece of work after the other, started with the first. What has not
/// begun when the queue dies is dropped; what has begun is waited for, so work must be bounded.
class BackgroundQueue {
  public:
    BackgroundQueue() = default;
    BackgroundQueue(const BackgroundQueue&) = delete;
    BackgroundQueue& operator=(const BackgroundQueue&) = delete;
    ~BackgroundQueue();

    void post(std::function<void()> work);

  private:
    void run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> waiting_;
    bool ends_ = false;
    std::thread thread_;
};

} // namespace orrivane
