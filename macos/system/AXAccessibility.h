#pragma once

#include <Orrivane/platform/Accessibility.h>

#include <functional>

namespace orrivane {

/// Other applications by the system's accessibility interface. Frames are global points, origin at
/// the primary screen's top left, y down. No call waits longer than `messagingTimeout` for a
/// process, whatever element it is made on.
class AXAccessibility : public Accessibility {
  public:
    /// What only the workspace knows; each must be set.
    struct Applications {
        std::function<std::vector<RunningApplication>()> running;
        std::function<std::optional<RunningApplication>()> menuBarOwning;
        std::function<std::optional<RunningApplication>()> frontmost;
    };

    explicit AXAccessibility(Applications applications);

    std::vector<RunningApplication> runningApplications() override;
    std::optional<RunningApplication> menuBarOwningApplication() override;
    std::optional<RunningApplication> frontmostApplication() override;
    AccessibilityElement applicationElement(std::int32_t processIdentifier) override;
    void setMessagingTimeout(const AccessibilityElement& element, float seconds) override;
    std::optional<AttributeValue> copyAttributeValue(const AccessibilityElement& element,
                                                     std::string_view attribute) override;
    /// "AXPress" on an item that tracks its menu inside the action often gives "cannot complete",
    /// although the menu has opened: the process answers only when the menu closes.
    int performAction(const AccessibilityElement& element, std::string_view action) override;
    bool statusItemsHaveSecondaryAction() override { return false; }
    bool isTrusted() override;

    static constexpr float messagingTimeout = 0.3F; // seconds

  private:
    void boundEveryCall();

    Applications applications_;
    bool isEveryCallBounded_ = false;
};

} // namespace orrivane
