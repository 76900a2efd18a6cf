#include <tests/support/ScriptedAccessibility.h>

#include <tests/support/VirtualLoop.h>

#include <algorithm>

namespace orrivane {

namespace {

class Body : public AccessibilityElementBody {
  public:
    explicit Body(std::int32_t processIdentifier)
        : owner(processIdentifier) {}
    std::int32_t owner;
};

std::int32_t processOf(const AccessibilityElement& element) {
    return dynamic_cast<const Body&>(element.body()).owner;
}

std::string onProcess(std::string_view call, std::string_view name, std::int32_t process) {
    return std::string(call) + " " + std::string(name) + " of " + std::to_string(process);
}

} // namespace

AccessibilityElement ScriptedAccessibility::makeElement(std::int32_t processIdentifier) {
    elements_.emplace_back(std::make_shared<Body>(processIdentifier));
    nodes_.emplace(&elements_.back().body(), Node{});
    return elements_.back();
}

ScriptedAccessibility::Node& ScriptedAccessibility::node(const AccessibilityElement& element) {
    return nodes_.at(&element.body());
}

void ScriptedAccessibility::setAttribute(const AccessibilityElement& element,
                                         const std::string& attribute, AttributeValue value) {
    node(element).attributes.insert_or_assign(attribute, std::move(value));
}

void ScriptedAccessibility::removeAttribute(const AccessibilityElement& element,
                                            const std::string& attribute) {
    node(element).attributes.erase(attribute);
}

void ScriptedAccessibility::setAction(const AccessibilityElement& element,
                                      const std::string& action, int result,
                                      std::function<void()> effect) {
    node(element).actions.insert_or_assign(action, Action{result, std::move(effect)});
}

void ScriptedAccessibility::destroyElement(const AccessibilityElement& element) {
    node(element).alive = false;
}

void ScriptedAccessibility::appendChild(const AccessibilityElement& parent,
                                        const AccessibilityElement& child) {
    auto& attributes = node(parent).attributes;
    auto& children = attributes.try_emplace("AXChildren", AccessibilityElementList{}).first->second;
    std::get<AccessibilityElementList>(children).push_back(child);
}

AccessibilityElement ScriptedAccessibility::addApplication(std::int32_t processIdentifier,
                                                           const std::string& name) {
    running.push_back({processIdentifier, name, "test." + name});
    applications_.erase(processIdentifier);
    const auto element = makeElement(processIdentifier);
    applications_.emplace(processIdentifier, element);
    return element;
}

AccessibilityElement ScriptedAccessibility::addStatusItem(std::int32_t processIdentifier,
                                                          const Rect& frame) {
    auto& attributes = node(applicationElement(processIdentifier)).attributes;
    if (!attributes.contains("AXExtrasMenuBar"))
        attributes.emplace("AXExtrasMenuBar", makeElement(processIdentifier));
    const auto extras = std::get<AccessibilityElement>(attributes.at("AXExtrasMenuBar"));
    const auto item = makeElement(processIdentifier);
    setAttribute(item, "AXFrame", frame);
    setAction(item, "AXPress");
    if (hasSecondaryAction)
        setAction(item, "AXShowMenu");
    appendChild(extras, item);
    return item;
}

AccessibilityElement
ScriptedAccessibility::setMenuBar(std::int32_t processIdentifier,
                                  const std::optional<Rect>& barFrame,
                                  const std::vector<std::optional<Rect>>& children) {
    const auto bar = makeElement(processIdentifier);
    if (barFrame)
        setAttribute(bar, "AXFrame", *barFrame);
    for (const auto& frame : children) {
        const auto child = makeElement(processIdentifier);
        if (frame)
            setAttribute(child, "AXFrame", *frame);
        appendChild(bar, child);
    }
    setAttribute(applicationElement(processIdentifier), "AXMenuBar", bar);
    return bar;
}

void ScriptedAccessibility::setMenuOpen(const AccessibilityElement& element, bool open) {
    removeAttribute(element, "AXChildren");
    if (!open)
        return;
    const auto menu = makeElement(processOf(element));
    setAttribute(menu, "AXRole", std::string("AXMenu"));
    appendChild(element, menu);
}

void ScriptedAccessibility::quit(std::int32_t processIdentifier) {
    std::erase_if(running, [&](const RunningApplication& application) {
        return application.processIdentifier == processIdentifier;
    });
    for (const auto& element : elements_)
        if (processOf(element) == processIdentifier)
            node(element).alive = false;
}

std::vector<RunningApplication> ScriptedAccessibility::runningApplications() {
    journal.note("runningApplications");
    return running;
}

std::optional<RunningApplication> ScriptedAccessibility::menuBarOwningApplication() {
    journal.note("menuBarOwningApplication");
    return menuBarOwner;
}

std::optional<RunningApplication> ScriptedAccessibility::frontmostApplication() {
    journal.note("frontmostApplication");
    return frontmost;
}

AccessibilityElement ScriptedAccessibility::applicationElement(std::int32_t processIdentifier) {
    const auto found = applications_.find(processIdentifier);
    if (found != applications_.end())
        return found->second;
    const auto element = makeElement(processIdentifier);
    applications_.emplace(processIdentifier, element);
    return element;
}

void ScriptedAccessibility::setMessagingTimeout(const AccessibilityElement& element,
                                                float seconds) {
    const auto process = processOf(element);
    timeouts.push_back({process, seconds});
    timeoutOf_.insert_or_assign(process, seconds);
}

bool ScriptedAccessibility::timesOut(std::int32_t processIdentifier) {
    if (!hung.contains(processIdentifier))
        return false;
    const auto set = timeoutOf_.find(processIdentifier);
    const double seconds =
        set != timeoutOf_.end() ? static_cast<double>(set->second) : defaultTimeout;
    secondsLostToHungProcesses += seconds;
    if (clock)
        clock->block(seconds);
    return true;
}

std::optional<AttributeValue>
ScriptedAccessibility::copyAttributeValue(const AccessibilityElement& element,
                                          std::string_view attribute) {
    const auto process = processOf(element);
    journal.note(onProcess("copyAttributeValue", attribute, process));
    if (!trusted || timesOut(process))
        return std::nullopt;
    const auto& read = node(element);
    const auto found = read.attributes.find(attribute);
    if (!read.alive || found == read.attributes.end())
        return std::nullopt;
    return found->second;
}

int ScriptedAccessibility::answer(const AccessibilityElement& element, std::string_view action) {
    if (!trusted)
        return apiDisabled;
    if (timesOut(processOf(element)))
        return cannotComplete;
    const auto& pressed = node(element);
    if (!pressed.alive)
        return invalidElement;
    const auto found = pressed.actions.find(action);
    return found != pressed.actions.end() ? found->second.result : actionUnsupported;
}

int ScriptedAccessibility::performAction(const AccessibilityElement& element,
                                         std::string_view action) {
    journal.note(onProcess("performAction", action, processOf(element)));
    const int result = answer(element, action);
    performed.push_back({element, std::string(action), result});
    const auto& actions = node(element).actions;
    if (const auto found = actions.find(action); result == 0 && found->second.effect) {
        // Copied: the effect may change the element's script.
        const auto effect = found->second.effect;
        effect();
    }
    return result;
}

bool ScriptedAccessibility::statusItemsHaveSecondaryAction() {
    return hasSecondaryAction;
}

bool ScriptedAccessibility::isTrusted() {
    journal.note("isTrusted");
    return trusted;
}

} // namespace orrivane
