#include <tests/macos/fakes/AccessibilityServer.h>

#include <tests/macos/fakes/Unicode.h>

#include <algorithm>

namespace orrivane::fakes {

AccessibilityServer& AccessibilityServer::shared() {
    static AccessibilityServer server;
    return server;
}

NodePointer AccessibilityServer::makeNode(pid_t process) const {
    auto node = std::make_shared<Node>();
    node->process = process;
    return node;
}

NodePointer AccessibilityServer::launch(pid_t process) {
    auto application = makeNode(process);
    processes[process] = {application, false};
    return application;
}

Any elementHandle(const NodePointer& node) {
    return Any::adopting(Heap::shared().make<CFTypeRef>(Element{node, 0}));
}

Answer gives(Any value) {
    return [value = std::move(value)](CFTypeRef* result) {
        *result = CFRef<CFTypeRef>(value).detach();
        return kAXErrorSuccess;
    };
}

Answer fails(AXError error) {
    return [error](CFTypeRef*) { return error; };
}

Answer givesNull() {
    return fails(kAXErrorSuccess);
}

Answer failsWriting(AXError error, CFTypeRef value) {
    return [error, value](CFTypeRef* result) {
        *result = value;
        return error;
    };
}

Answer givesElement(const NodePointer& node) {
    return [weak = std::weak_ptr(node)](CFTypeRef* result) {
        const auto strong = weak.lock();
        if (!strong)
            return kAXErrorNoValue;
        *result = elementHandle(strong).detach();
        return kAXErrorSuccess;
    };
}

Answer givesElements(std::vector<NodePointer> nodes) {
    return [nodes = std::move(nodes)](CFTypeRef* result) {
        std::vector<Any> handles;
        for (const auto& node : nodes)
            handles.push_back(elementHandle(node));
        *result = list(handles).detach();
        return kAXErrorSuccess;
    };
}

namespace {

std::string nameOf(CFStringRef string) {
    const auto* text = Heap::shared().find<Text>(string);
    std::string bytes;
    if (text)
        toUtf8(text->units, 3 * text->units.size(), bytes);
    return bytes;
}

/// Whether the process behind a handle answers at all; lets time pass where it does not.
AXError reach(const Element& element) {
    auto& server = AccessibilityServer::shared();
    if (!server.isTrusted)
        return kAXErrorAPIDisabled;
    if (!element.node)
        return kAXErrorFailure;
    const auto process = server.processes.find(element.node->process);
    if (process == server.processes.end())
        return kAXErrorInvalidUIElement;
    if (!process->second.hangs)
        return kAXErrorSuccess;
    server.now += double{element.timeout > 0 ? element.timeout : server.processWideTimeout};
    return kAXErrorCannotComplete;
}

} // namespace

} // namespace orrivane::fakes

using namespace orrivane::fakes;

CFTypeID AXUIElementGetTypeID() {
    return Heap::typeId<Element>();
}
CFTypeID AXValueGetTypeID() {
    return Heap::typeId<Packed>();
}

AXUIElementRef AXUIElementCreateApplication(pid_t process) {
    const auto& server = AccessibilityServer::shared();
    if (!server.makesElements)
        return nullptr;
    const auto known = server.processes.find(process);
    auto node =
        known == server.processes.end() ? server.makeNode(process) : known->second.application;
    return Heap::shared().make<AXUIElementRef>(Element{std::move(node), 0});
}

AXUIElementRef AXUIElementCreateSystemWide() {
    if (!AccessibilityServer::shared().makesElements)
        return nullptr;
    return Heap::shared().make<AXUIElementRef>(Element{nullptr, 0});
}

AXError AXUIElementSetMessagingTimeout(AXUIElementRef reference, float seconds) {
    auto& server = AccessibilityServer::shared();
    auto* element = Heap::shared().find<Element>(reference);
    if (!element || seconds < 0)
        return kAXErrorIllegalArgument;
    if (server.timeoutAnswer != kAXErrorSuccess)
        return server.timeoutAnswer;
    if (element->node)
        element->timeout = seconds;
    else
        server.processWideTimeout = seconds > 0 ? seconds : server.systemTimeout;
    return kAXErrorSuccess;
}

AXError AXUIElementCopyAttributeValue(AXUIElementRef reference, CFStringRef attribute,
                                      CFTypeRef* value) {
    const auto* element = Heap::shared().find<Element>(reference);
    if (!element || !value)
        return kAXErrorIllegalArgument;
    const auto name = nameOf(attribute);
    if (const auto error = reach(*element); error != kAXErrorSuccess)
        return error;
    const auto answer = element->node->attributes.find(name);
    if (answer == element->node->attributes.end())
        return kAXErrorAttributeUnsupported;
    return answer->second(value);
}

AXError AXUIElementPerformAction(AXUIElementRef reference, CFStringRef action) {
    const auto* element = Heap::shared().find<Element>(reference);
    if (!element)
        return kAXErrorIllegalArgument;
    const auto name = nameOf(action);
    if (const auto error = reach(*element); error != kAXErrorSuccess)
        return error;
    const auto performer = element->node->actions.find(name);
    if (performer == element->node->actions.end())
        return kAXErrorActionUnsupported;
    return performer->second();
}

AXValueType AXValueGetType(AXValueRef reference) {
    const auto* value = Heap::shared().find<Packed>(reference);
    return value ? value->type : kAXValueTypeIllegal;
}

Boolean AXValueGetValue(AXValueRef reference, AXValueType type, void* result) {
    const auto* value = Heap::shared().find<Packed>(reference);
    const std::size_t count = type == kAXValueTypeCGRect ? 4 : 2;
    if (!value || value->type != type || value->numbers.size() != count)
        return false;
    std::ranges::copy(value->numbers, static_cast<double*>(result));
    return true;
}

Boolean AXIsProcessTrusted() {
    return AccessibilityServer::shared().isTrusted;
}
