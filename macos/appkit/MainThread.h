#pragma once

#include <functional>
#include <memory>

namespace orrivane {

/// Runs `work` from the main run loop, in the common modes and inside an autorelease pool of its
/// own; from any thread. The main dispatch queue would not do: it stands still while work that came
/// from it runs a dialog.
void onMainThread(std::function<void()> work);
/// Here if this is the main thread, else as above.
void nowOrOnMainThread(std::function<void()> work);

/// Runs what the system calls back for. What is thrown ends the program here: beyond lie frames of
/// the system that nothing may unwind.
inline void callOut(const std::function<void()>& work) noexcept {
    if (work)
        work();
}

/// `value` shared with other threads, but destroyed on the main one.
template <typename T>
[[nodiscard]] std::shared_ptr<T> boundToMainThread(T value) {
    return std::shared_ptr<T>(new T(std::move(value)),
                              [](T* owned) { nowOrOnMainThread([owned] { delete owned; }); });
}

} // namespace orrivane
