#pragma once

#include <Orrivane/support/ObserverList.h>

#include <functional>
#include <utility>

namespace orrivane {

/// A model whose published fields announce every assignment before it happens.
class ObservableObject {
  public:
    ObservableObject() = default;
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

    /// `willChange` runs before a field takes its new value: the old one can still be read.
    Subscription observe(std::function<void()> willChange) {
        return observers_.add(std::move(willChange));
    }
    void announceChange() { observers_.notify(); }

  private:
    ObserverList<> observers_;
};

/// A field of an ObservableObject. An assignment of an equal value is announced as well.
template <typename T>
class Published {
  public:
    Published(ObservableObject& owner, T initial)
        : owner_(owner)
        , value_(std::move(initial)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    Published& operator=(T value) {
        owner_.announceChange();
        value_ = std::move(value);
        return *this;
    }
    [[nodiscard]] const T& get() const { return value_; }
    // NOLINTNEXTLINE(google-explicit-constructor): reads as the field
    operator const T&() const { return value_; }

  private:
    ObservableObject& owner_;
    T value_;
};

} // namespace orrivane
