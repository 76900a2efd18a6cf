#include <tests/macos/fakes/EventSystem.h>

namespace orrivane::fakes {

EventSystem& EventSystem::shared() {
    static EventSystem system;
    return system;
}

} // namespace orrivane::fakes

using namespace orrivane::fakes;

namespace {

Event& eventOf(CGEventRef reference) {
    static Event none{};
    auto* event = Heap::shared().find<Event>(reference);
    return event ? *event : none;
}

} // namespace

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID state) {
    if (EventSystem::shared().refusesSources)
        return nullptr;
    if (state != kCGEventSourceStateHIDSystemState)
        Heap::shared().note("a source of another state than the hardware's");
    return Heap::shared().make<CGEventSourceRef>(Source{state});
}

CGEventRef CGEventCreateMouseEvent(CGEventSourceRef source, CGEventType type, CGPoint position,
                                   CGMouseButton button) {
    auto& system = EventSystem::shared();
    if (source)
        (void)Heap::shared().find<Source>(source);
    if (button != kCGMouseButtonLeft)
        Heap::shared().note("another button than the left one");
    if (system.eventsLeft && (*system.eventsLeft)-- < 1)
        return nullptr;
    return Heap::shared().make<CGEventRef>(Event{type, position, system.hardwareModifiers});
}

CGEventType CGEventGetType(CGEventRef event) {
    return eventOf(event).type;
}
CGPoint CGEventGetLocation(CGEventRef event) {
    return eventOf(event).position;
}
void CGEventSetLocation(CGEventRef event, CGPoint position) {
    eventOf(event).position = position;
}
CGEventFlags CGEventGetFlags(CGEventRef event) {
    return eventOf(event).flags;
}
void CGEventSetFlags(CGEventRef event, CGEventFlags flags) {
    eventOf(event).flags = flags;
}

void CGEventPost(CGEventTapLocation tap, CGEventRef reference) {
    if (tap != kCGHIDEventTap)
        Heap::shared().note("posted elsewhere than where hardware events enter");
    const auto* event = Heap::shared().find<Event>(reference);
    auto& system = EventSystem::shared();
    if (!event || !system.isPermitted)
        return;
    if (event->type == kCGEventLeftMouseDown)
        system.isButtonHeld = true;
    if (event->type == kCGEventLeftMouseUp)
        system.isButtonHeld = false;
    system.arrived.push_back(*event);
}
