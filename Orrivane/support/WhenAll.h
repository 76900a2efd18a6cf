#pragma once

#include <Orrivane/support/Task.h>

#include <coroutine>
#include <cstddef>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

namespace orrivane {

namespace detail {

/// Counts the branches that still run; the last one resumes the parent.
struct BranchLatch {
    std::size_t remaining = 0;
    std::coroutine_handle<> parent;
    std::exception_ptr error;
};

/// One child of a `whenAll`, run concurrently with its siblings on the same thread.
class Branch {
  public:
    struct promise_type : TaskPromiseBase {
        BranchLatch* latch = nullptr;

        Branch get_return_object() {
            return Branch(std::coroutine_handle<promise_type>::from_promise(*this));
        }
        [[nodiscard]] std::suspend_always initial_suspend() const noexcept { return {}; }
        struct Arrive {
            [[nodiscard]] bool await_ready() const noexcept { return false; }
            std::coroutine_handle<>
            await_suspend(std::coroutine_handle<promise_type> self) const noexcept {
                auto& counter = *self.promise().latch;
                return --counter.remaining == 0 ? counter.parent : std::noop_coroutine();
            }
            void await_resume() const noexcept {}
        };
        [[nodiscard]] Arrive final_suspend() const noexcept { return {}; }
        void return_void() const noexcept {}
        void unhandled_exception() noexcept {
            if (!latch->error)
                latch->error = std::current_exception();
        }
    };

    Branch(Branch&& other) noexcept
        : frame_(std::exchange(other.frame_, nullptr)) {}
    Branch(const Branch&) = delete;
    Branch& operator=(const Branch&) = delete;
    Branch& operator=(Branch&&) = delete;
    ~Branch() {
        if (frame_)
            frame_.destroy();
    }

    void begin(TaskContext* taskContext, BranchLatch& branchLatch) const {
        frame_.promise().context = taskContext;
        frame_.promise().latch = &branchLatch;
        frame_.resume();
    }

  private:
    explicit Branch(std::coroutine_handle<promise_type> frame)
        : frame_(frame) {}
    std::coroutine_handle<promise_type> frame_;
};

template <typename T>
Branch runBranch(Task<T> task, std::optional<T>& slot) {
    slot.emplace(co_await std::move(task));
}

/// Begins every branch in order and suspends until the last has arrived.
class AllBranches {
  public:
    AllBranches(const std::vector<Branch>& branches, BranchLatch& latch)
        : branches_(branches)
        , latch_(latch) {}

    [[nodiscard]] bool await_ready() const noexcept { return branches_.empty(); }
    template <typename Promise>
    bool await_suspend(std::coroutine_handle<Promise> parent) {
        // One extra arrival, ours, keeps a branch that ends at once from resuming the parent while
        // later branches have not begun.
        latch_.remaining = branches_.size() + 1;
        latch_.parent = parent;
        for (const auto& branch : branches_)
            branch.begin(parent.promise().context, latch_);
        return --latch_.remaining != 0;
    }
    void await_resume() const {
        if (latch_.error)
            std::rethrow_exception(latch_.error);
    }

  private:
    const std::vector<Branch>& branches_;
    BranchLatch& latch_;
};

} // namespace detail

/// Runs the tasks concurrently, begun in their order, and gives their values in that order. The
/// first error is handed on, after all have ended.
template <typename T>
Task<std::vector<T>> whenAll(std::vector<Task<T>> tasks) {
    std::vector<std::optional<T>> slots(tasks.size());
    std::vector<detail::Branch> branches;
    branches.reserve(tasks.size());
    for (std::size_t i = 0; i < tasks.size(); ++i)
        branches.push_back(detail::runBranch(std::move(tasks[i]), slots[i]));
    detail::BranchLatch latch;
    detail::AllBranches all(branches, latch);
    co_await all;
    std::vector<T> values;
    values.reserve(slots.size());
    for (auto& slot : slots)
        values.push_back(std::move(*slot));
    co_return values;
}

} // namespace orrivane
