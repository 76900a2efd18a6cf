#include <macos/system/CGEventPoster.h>

#include <macos/system/CGGeometry.h>

#include <utility>

namespace orrivane {

namespace {

CFRef<CGEventRef> leftButtonEvent(CGEventSourceRef source, CGEventType type, CGPoint position) {
    return CFRef<CGEventRef>::adopting(
        CGEventCreateMouseEvent(source, type, position, kCGMouseButtonLeft));
}

} // namespace

class CGEventPoster::Source : public EventSource {
  public:
    Source(CGEventPoster& poster, CFRef<CGEventSourceRef> source)
        : reference(std::move(source))
        , poster_(poster) {}
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() override { poster_.release_ = {}; }

    CFRef<CGEventSourceRef> reference;

  private:
    CGEventPoster& poster_;
};

class CGEventPoster::Event : public MouseEvent {
  public:
    CFRef<CGEventRef> reference; ///< never empty
    CFRef<CGEventRef> release;   ///< of a press: what takes it back; may be empty
};

std::unique_ptr<EventSource> CGEventPoster::createSource() {
    auto source =
        CFRef<CGEventSourceRef>::adopting(CGEventSourceCreate(kCGEventSourceStateHIDSystemState));
    if (!source)
        return nullptr;
    return std::make_unique<Source>(*this, std::move(source));
}

std::unique_ptr<MouseEvent> CGEventPoster::createMouseEvent(EventSource* source,
                                                            MouseEventType type, Point position) {
    const auto from = source ? static_cast<Source*>(source)->reference.get() : nullptr;
    auto event = std::make_unique<Event>();
    event->reference = leftButtonEvent(from, static_cast<CGEventType>(type), cgPoint(position));
    if (!event->reference)
        return nullptr;
    // Made beforehand: a process that ends has no time for failures.
    if (type == MouseEventType::leftMouseDown)
        event->release = leftButtonEvent(from, kCGEventLeftMouseUp, cgPoint(position));
    return event;
}

void CGEventPoster::setFlags(MouseEvent& event, std::uint64_t flags) {
    CGEventSetFlags(static_cast<Event&>(event).reference.get(), static_cast<CGEventFlags>(flags));
}

void CGEventPoster::post(const MouseEvent& posted) {
    const auto& event = static_cast<const Event&>(posted);
    CGEventPost(kCGHIDEventTap, event.reference.get());
    const auto type = CGEventGetType(event.reference.get());
    if (type == kCGEventLeftMouseDown)
        release_ = event.release;
    else if (type == kCGEventLeftMouseUp)
        release_ = {};
    if (!release_)
        return;
    CGEventSetLocation(release_.get(), CGEventGetLocation(event.reference.get()));
    CGEventSetFlags(release_.get(), CGEventGetFlags(event.reference.get()));
}

void CGEventPoster::releaseAll() {
    if (release_)
        CGEventPost(kCGHIDEventTap, std::exchange(release_, {}).get());
}

} // namespace orrivane
