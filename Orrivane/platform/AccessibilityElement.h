#pragma once

#include <Orrivane/support/Geometry.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace orrivane {

/// What a platform keeps behind an element handle.
class AccessibilityElementBody {
  public:
    AccessibilityElementBody() = default;
    AccessibilityElementBody(const AccessibilityElementBody&) = delete;
    AccessibilityElementBody& operator=(const AccessibilityElementBody&) = delete;
    virtual ~AccessibilityElementBody() = default;
};

/// A handle to one element of another process's accessibility tree. Copies share the handle; the
/// element behind it may be gone at any time, reads of it are then absent.
class AccessibilityElement {
  public:
    explicit AccessibilityElement(std::shared_ptr<const AccessibilityElementBody> body)
        : body_(std::move(body)) {}

    /// For the platform that made the element.
    [[nodiscard]] const AccessibilityElementBody& body() const { return *body_; }

    friend bool operator==(const AccessibilityElement&, const AccessibilityElement&) = default;

  private:
    std::shared_ptr<const AccessibilityElementBody> body_; // never null
};

/// A list attribute; a member that is not an element is absent.
using AccessibilityElementList = std::vector<std::optional<AccessibilityElement>>;

/// A value of a type nobody here asks for.
struct OtherAttributeValue {
    friend bool operator==(const OtherAttributeValue&, const OtherAttributeValue&) = default;
};

using AttributeValue = std::variant<OtherAttributeValue, AccessibilityElement,
                                    AccessibilityElementList, std::string, Rect, Point, Size>;

} // namespace orrivane
