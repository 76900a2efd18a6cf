#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace orrivane {

/// Owns one reference to a Core Foundation object, or to any other type that CFRetain accepts
/// (CGImageRef, CGEventRef, AXUIElementRef). May be empty; copies retain.
template <typename T>
class CFRef {
  public:
    CFRef() = default;
    CFRef(const CFRef& other)
        : CFRef(retaining(other.object_)) {}
    CFRef(CFRef&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}
    CFRef& operator=(CFRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~CFRef() {
        // The system's own functions crash on null.
        if (object_)
            CFRelease(object_);
    }

    /// Takes over a reference that a Create or Copy function has given; null is fine.
    [[nodiscard]] static CFRef adopting(T object) { return CFRef(object); }
    /// Adds a reference to a borrowed object; null is fine.
    [[nodiscard]] static CFRef retaining(T object) {
        if (object)
            CFRetain(object);
        return CFRef(object);
    }

    /// Borrowed; null when empty.
    [[nodiscard]] T get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    /// Gives the reference away: the caller must release it.
    [[nodiscard]] T detach() { return std::exchange(object_, nullptr); }

  private:
    explicit CFRef(T object)
        : object_(object) {}

    T object_ = nullptr;
};

} // namespace orrivane
