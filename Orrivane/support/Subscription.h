#pragma once

#include <functional>
#include <utility>

namespace orrivane {

/// An observer's registration: destroying it removes the observer from the centre it came from.
/// Whoever gave it out stays usable after it: a registration may outlive its centre.
class [[nodiscard]] Subscription {
  public:
    Subscription() = default;
    explicit Subscription(std::function<void()> remove)
        : remove_(std::move(remove)) {}
    Subscription(Subscription&& other) noexcept
        : remove_(std::exchange(other.remove_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            remove_ = std::exchange(other.remove_, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { reset(); }

    void reset() {
        if (auto remove = std::exchange(remove_, nullptr))
            remove();
    }
    /// True while the observer is registered.
    explicit operator bool() const { return static_cast<bool>(remove_); }

  private:
    std::function<void()> remove_;
};

} // namespace orrivane
