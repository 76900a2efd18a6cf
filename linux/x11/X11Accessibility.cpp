#include <linux/x11/X11Accessibility.h>

#include <xcb/res.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <utility>

namespace orrivane::x11 {

struct X11Accessibility::Element : AccessibilityElementBody {
    enum class Kind { application, extrasMenuBar, item, menu, menuBar, menuBarItem };

    Element(Kind what, std::int32_t pid, std::uint32_t id = 0, std::uint64_t itemSerial = 0)
        : kind(what)
        , process(pid)
        , window(id)
        , serial(itemSerial) {}

    static AccessibilityElement make(Kind kind, std::int32_t process, std::uint32_t window = 0,
                                     std::uint64_t serial = 0) {
        return AccessibilityElement(std::make_shared<const Element>(kind, process, window, serial));
    }

    Kind kind;
    std::int32_t process;
    std::uint32_t window;
    std::uint64_t serial;
};

struct X11Accessibility::Owned {
    StatusItem item;
    WindowOwner owner;
};

X11Accessibility::X11Accessibility(const Parts& parts, std::function<std::uint32_t()> activeWindow,
                                   GlobalMenu globalMenu)
    : parts_(parts)
    , owners_(parts.connection)
    , activeWindow_(std::move(activeWindow))
    , globalMenu_(std::move(globalMenu)) {}

WindowOwner X11Accessibility::ownerOf(std::uint32_t window) {
    const auto* known = parts_.tree.find(window);
    return known ? owners_.ofWindow(*known) : owners_.ofStranger(window);
}

std::vector<X11Accessibility::Owned> X11Accessibility::ownedItems() {
    const auto& items = parts_.items.current();
    const auto owners = owners_.of(items);
    std::vector<Owned> result;
    for (std::size_t i = 0; i < items.size(); ++i)
        result.push_back({items[i], owners[i]});
    return result;
}

std::vector<RunningApplication> X11Accessibility::runningApplications() {
    std::vector<RunningApplication> applications;
    for (const auto& [item, owner] : ownedItems()) {
        const auto process = owner.process;
        if (std::ranges::find(applications, process, &RunningApplication::processIdentifier) ==
            applications.end())
            applications.push_back({process, owner.name, std::nullopt});
    }
    return applications;
}

std::optional<RunningApplication> X11Accessibility::menuBarOwningApplication() {
    if (auto active = frontmostApplication())
        return active;
    const auto* dock = parts_.items.dock();
    if (!dock)
        return std::nullopt;
    const auto owner = owners_.ofWindow(*dock);
    return RunningApplication{owner.process, owner.name, std::nullopt};
}

std::optional<RunningApplication> X11Accessibility::frontmostApplication() {
    const auto window = activeWindow_();
    if (window == 0)
        return std::nullopt;
    const auto owner = ownerOf(window);
    if (owner.process == 0)
        return std::nullopt;
    return RunningApplication{owner.process, owner.name, std::nullopt};
}

AccessibilityElement X11Accessibility::applicationElement(std::int32_t processIdentifier) {
    return Element::make(Element::Kind::application, processIdentifier);
}

// Every wait here is for the X server alone and already shorter.
void X11Accessibility::setMessagingTimeout(const AccessibilityElement&, float) {}

std::optional<AttributeValue>
X11Accessibility::copyAttributeValue(const AccessibilityElement& handle,
                                     std::string_view attribute) {
    const auto& element = static_cast<const Element&>(handle.body());
    switch (element.kind) {
    case Element::Kind::application:
        return ofApplication(element, attribute);
    case Element::Kind::extrasMenuBar:
        if (attribute == "AXChildren")
            return itemsOf(element.process);
        return std::nullopt;
    case Element::Kind::item:
        return ofItem(element, attribute);
    case Element::Kind::menu:
        if (attribute == "AXRole")
            return std::string("AXMenu");
        return std::nullopt;
    case Element::Kind::menuBar:
    case Element::Kind::menuBarItem:
        return ofMenuBar(element, attribute);
    }
    return std::nullopt;
}

std::optional<AttributeValue> X11Accessibility::ofApplication(const Element& element,
                                                              std::string_view attribute) {
    if (attribute == "AXExtrasMenuBar" && !itemsOf(element.process).empty())
        return Element::make(Element::Kind::extrasMenuBar, element.process);
    if (attribute == "AXMenuBar" && parts_.items.dock()) {
        const auto owner = menuBarOwningApplication();
        if (owner && owner->processIdentifier == element.process)
            return Element::make(Element::Kind::menuBar, element.process);
    }
    return std::nullopt;
}

AccessibilityElementList X11Accessibility::itemsOf(std::int32_t process) {
    AccessibilityElementList elements;
    for (const auto& [item, owner] : ownedItems())
        if (owner.process == process)
            elements.emplace_back(
                Element::make(Element::Kind::item, process, item.window, item.serial));
    return elements;
}

const StatusItem* X11Accessibility::itemOf(const Element& element) {
    parts_.items.current();
    const auto* item = parts_.items.find(element.window);
    return item && item->serial == element.serial ? item : nullptr;
}

std::optional<AttributeValue> X11Accessibility::ofItem(const Element& element,
                                                       std::string_view attribute) {
    const auto* item = itemOf(element);
    if (!item)
        return std::nullopt;
    if (attribute == "AXFrame") {
        const Rect bounds{{static_cast<double>(item->rect.x), item->band.minY()},
                          {static_cast<double>(item->rect.width), item->band.height()}};
        return parts_.screens.space().toGlobal(bounds);
    }
    if (attribute == "AXRole")
        return std::string("AXMenuBarItem");
    if (attribute != "AXChildren")
        return std::nullopt;
    AccessibilityElementList children;
    if (const auto menu = parts_.menus.menuOf(element.window))
        children.emplace_back(Element::make(Element::Kind::menu, element.process, menu));
    return children;
}

std::optional<X11Accessibility::Bar> X11Accessibility::bar(std::int32_t process) {
    const auto* dock = parts_.items.dock();
    if (!dock)
        return std::nullopt;
    const auto dockWindow = dock->id;
    const auto& monitors = parts_.screens.monitors();
    auto rect = parts_.items.rectOf(*dock);
    const auto monitor = std::ranges::find_if(
        monitors, [&](const Monitor& candidate) { return candidate.rect.intersects(rect); });
    if (monitor != monitors.end()) {
        rect.x = monitor->rect.x;
        rect.width = monitor->rect.width;
    }
    int end = parts_.items.rightEdgeOfDockContent().value_or(rect.x);
    if (globalMenu_) {
        auto edge = globalMenu_(process, rect);
        if (const auto host = edge ? process : ownerOf(dockWindow).process; host != process)
            edge = globalMenu_(host, rect);
        end = edge.value_or(end);
    }
    return Bar{rect, end};
}

std::optional<AttributeValue> X11Accessibility::ofMenuBar(const Element& element,
                                                          std::string_view attribute) {
    if (element.kind == Element::Kind::menuBar && attribute == "AXChildren")
        return AccessibilityElementList{Element::make(Element::Kind::menuBarItem, element.process)};
    if (attribute != "AXFrame")
        return std::nullopt;
    auto found = bar(element.process);
    if (!found)
        return std::nullopt;
    if (element.kind == Element::Kind::menuBarItem)
        found->rect.width = std::max(found->menuEnd - found->rect.x, 0);
    return parts_.screens.space().toGlobal(found->rect);
}

int X11Accessibility::performAction(const AccessibilityElement& handle, std::string_view action) {
    const auto& element = static_cast<const Element&>(handle.body());
    if (element.kind != Element::Kind::item || !itemOf(element))
        return Presser::cannotComplete;
    if (action == "AXPress")
        return parts_.presser.press(element.window, PointerButton::primary);
    if (action == "AXShowMenu")
        return parts_.presser.press(element.window, PointerButton::secondary);
    return Presser::cannotComplete;
}

bool X11Accessibility::isTrusted() {
    return parts_.connection.has(&xcb_test_id) && parts_.connection.has(&xcb_res_id);
}

} // namespace orrivane::x11
