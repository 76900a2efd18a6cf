#pragma once

#include <Orrivane/platform/AccessibilityElement.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane {

struct RunningApplication {
    std::int32_t processIdentifier = 0; ///< less than 1 when the system does not know it
    std::optional<std::string> localizedName;
    std::optional<std::string> bundleIdentifier;

    friend bool operator==(const RunningApplication&, const RunningApplication&) = default;
};

/// Other applications' accessibility trees. Synchronous, main thread only; a call to a process that
/// does not answer ends with a failure after the messaging timeout.
class Accessibility {
  public:
    virtual ~Accessibility() = default;

    /// In the system's order.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() = 0;
    [[nodiscard]] virtual std::optional<RunningApplication> menuBarOwningApplication() = 0;
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// Succeeds for any process identifier; a process that is gone only fails the reads.
    [[nodiscard]] virtual AccessibilityElement
    applicationElement(std::int32_t processIdentifier) = 0;
    virtual void setMessagingTimeout(const AccessibilityElement& element, float seconds) = 0;

    /// One attribute's value; absent when the read failed with whatever code or there is none.
    [[nodiscard]] virtual std::optional<AttributeValue>
    copyAttributeValue(const AccessibilityElement& element, std::string_view attribute) = 0;

    /// 0 when the action was accepted, else the platform's error code.
    [[nodiscard]] virtual int performAction(const AccessibilityElement& element,
                                            std::string_view action) = 0;

    /// Whether status items answer "AXShowMenu", the right button's action, besides "AXPress".
    [[nodiscard]] virtual bool statusItemsHaveSecondaryAction() = 0;

    /// Whether the user lets this program use the interface; never prompts.
    [[nodiscard]] virtual bool isTrusted() = 0;
};

} // namespace orrivane
