#pragma once

#include <Orrivane/support/Task.h>
#include <tests/support/VirtualLoop.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>

namespace orrivane {

/// The base of tests about tasks. Tasks run on `loop`, and only while a test lets it run.
class CoroutineTest : public ::testing::Test {
  protected:
    VirtualLoop loop;

    /// Runs the task to its end within one instant, nothing posted and no timer run meanwhile, and
    /// gives its value. A task that suspends fails the test, and the value is absent. What the
    /// task throws comes out of here.
    template <typename T>
    std::optional<T> expectCompletesWithoutSuspending(Task<T> task) {
        const auto value = std::make_shared<std::optional<T>>();
        expectVoidCompletes(keep(std::move(task), value));
        return std::move(*value);
    }
    void expectCompletesWithoutSuspending(Task<void> task) { expectVoidCompletes(std::move(task)); }

    /// Runs the task to its first suspension and hands it over, still running. A task that ends
    /// without suspending fails the test.
    TaskHandle expectSuspends(Task<void> task);
    /// As above; the value is written to `value`, which outlives the task, once it is there.
    template <typename T>
    TaskHandle expectSuspends(Task<T> task, std::optional<T>& value) {
        return expectSuspends(store(std::move(task), value));
    }

    /// Runs the task for at most `seconds` of virtual time and gives its value. A task that does
    /// not end by then fails the test.
    template <typename T>
    std::optional<T> expectCompletesWithin(double seconds, Task<T> task) {
        const auto value = std::make_shared<std::optional<T>>();
        expectVoidCompletesWithin(seconds, keep(std::move(task), value));
        return std::move(*value);
    }
    void expectCompletesWithin(double seconds, Task<void> task) {
        expectVoidCompletesWithin(seconds, std::move(task));
    }

  private:
    // The value is shared because a task that failed the test may still end later.
    template <typename T>
    static Task<void> keep(Task<T> task, std::shared_ptr<std::optional<T>> value) {
        value->emplace(co_await std::move(task));
    }
    template <typename T>
    static Task<void> store(Task<T> task, std::optional<T>& value) {
        value.emplace(co_await std::move(task));
    }
    void expectVoidCompletes(Task<void> task);
    void expectVoidCompletesWithin(double seconds, Task<void> task);
};

} // namespace orrivane
