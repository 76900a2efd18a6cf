#pragma once

#include <Orrivane/platform/EventPoster.h>

#include <macos/system/CFRef.h>

#include <CoreGraphics/CoreGraphics.h>

namespace orrivane {

/// Mouse events posted where hardware events enter the system. Command is a flag of each event, no
/// key is held for it; so the left button is all that can be left pressed. Without the permission
/// to use accessibility the system drops every event and says nothing.
class CGEventPoster : public EventPoster {
  public:
    CGEventPoster() = default;
    CGEventPoster(const CGEventPoster&) = delete;
    CGEventPoster& operator=(const CGEventPoster&) = delete;
    ~CGEventPoster() override { releaseAll(); }

    std::unique_ptr<EventSource> createSource() override;
    std::unique_ptr<MouseEvent> createMouseEvent(EventSource* source, MouseEventType type,
                                                 Point position) override;
    void setFlags(MouseEvent& event, std::uint64_t flags) override;
    void post(const MouseEvent& event) override;

    /// Lets go of the button where it was seen last. Also for a process that ends without returning
    /// from its main loop: no destructor runs then.
    void releaseAll();

  private:
    class Source;
    class Event;

    CFRef<CGEventRef> release_; // empty unless the button is held
};

} // namespace orrivane
