#pragma once

#include <Orrivane/platform/Accessibility.h>
#include <tests/support/CallJournal.h>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace orrivane {

class VirtualLoop;

/// Processes and their accessibility trees, written by hand. Elements are made here and belong to
/// one process; attributes and actions hang on them by name.
class ScriptedAccessibility : public Accessibility {
  public:
    // The error codes of the accessibility interface that the script itself answers with.
    static constexpr int cannotComplete = -25204;
    static constexpr int invalidElement = -25202;
    static constexpr int actionUnsupported = -25206;
    static constexpr int apiDisabled = -25211;

    struct Timeout {
        std::int32_t processIdentifier = 0;
        float seconds = 0;

        friend bool operator==(const Timeout&, const Timeout&) = default;
    };
    struct Performed {
        AccessibilityElement element;
        std::string action;
        int result = 0;
    };

    explicit ScriptedAccessibility(CallJournal calls = {})
        : journal(std::move(calls)) {}

    std::vector<RunningApplication> running;
    std::optional<RunningApplication> menuBarOwner;
    std::optional<RunningApplication> frontmost;
    bool trusted = true;
    bool hasSecondaryAction = false;
    /// Processes that answer nothing. Each call to one of them takes its messaging timeout.
    std::set<std::int32_t> hung;
    /// When set, the time that hung processes cost passes on this loop.
    VirtualLoop* clock = nullptr;
    double defaultTimeout = 6; ///< seconds, where none was set

    std::vector<Timeout> timeouts;    ///< every call, in order
    std::vector<Performed> performed; ///< every call, in order
    double secondsLostToHungProcesses = 0;
    CallJournal journal;

    /// A detached element of a process; make it reachable with `setAttribute`.
    AccessibilityElement makeElement(std::int32_t processIdentifier);
    void setAttribute(const AccessibilityElement& element, const std::string& attribute,
                      AttributeValue value);
    /// From now on the read fails, as if the element had no such attribute.
    void removeAttribute(const AccessibilityElement& element, const std::string& attribute);
    /// `result` is the code the action answers with; `effect` runs when it is performed.
    void setAction(const AccessibilityElement& element, const std::string& action, int result = 0,
                   std::function<void()> effect = {});
    /// The element stays a valid handle whose reads and actions fail.
    void destroyElement(const AccessibilityElement& element);

    /// A running application, last in the system's order.
    AccessibilityElement addApplication(std::int32_t processIdentifier, const std::string& name);
    /// A status item of the process: a pressable child of its extras menu bar, last in child order.
    AccessibilityElement addStatusItem(std::int32_t processIdentifier, const Rect& frame);
    /// A menu bar with one child a frame; an absent frame is a child without geometry.
    AccessibilityElement setMenuBar(std::int32_t processIdentifier,
                                    const std::optional<Rect>& barFrame,
                                    const std::vector<std::optional<Rect>>& children);
    /// Gives the element a child with the role of an open menu, or takes its children away.
    void setMenuOpen(const AccessibilityElement& element, bool open);
    /// Takes the process off the list; all its elements are gone.
    void quit(std::int32_t processIdentifier);

    std::vector<RunningApplication> runningApplications() override;
    std::optional<RunningApplication> menuBarOwningApplication() override;
    std::optional<RunningApplication> frontmostApplication() override;
    AccessibilityElement applicationElement(std::int32_t processIdentifier) override;
    void setMessagingTimeout(const AccessibilityElement& element, float seconds) override;
    std::optional<AttributeValue> copyAttributeValue(const AccessibilityElement& element,
                                                     std::string_view attribute) override;
    int performAction(const AccessibilityElement& element, std::string_view action) override;
    bool statusItemsHaveSecondaryAction() override;
    bool isTrusted() override;

  private:
    struct Action {
        int result = 0;
        std::function<void()> effect;
    };
    struct Node {
        bool alive = true;
        std::map<std::string, AttributeValue, std::less<>> attributes;
        std::map<std::string, Action, std::less<>> actions;
    };

    Node& node(const AccessibilityElement& element);
    void appendChild(const AccessibilityElement& parent, const AccessibilityElement& child);
    [[nodiscard]] bool timesOut(std::int32_t processIdentifier);
    int answer(const AccessibilityElement& element, std::string_view action);

    std::map<const AccessibilityElementBody*, Node> nodes_;
    // Kept so that no element's address is used a second time.
    std::vector<AccessibilityElement> elements_;
    std::map<std::int32_t, AccessibilityElement> applications_;
    std::map<std::int32_t, float> timeoutOf_;
};

} // namespace orrivane
