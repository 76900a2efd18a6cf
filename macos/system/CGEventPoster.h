#pragma once

#include <Orrivane/platform/EventPoster.h>

#include <macos/system/CFRef.h>

#include <CoreGraphics/CoreGraphics.h>

namespace orrivane {

/// Mouse events posted where hardware events enter the system. Command is a flag of each event, no
/// key is held for it; so the left button is all that can be left pressed. A gesture that breaks
/// off posts nothing more: the next real click lets go. Without the permission to use accessibility
/// the system drops every event and says nothing.
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

    /// Lets go of a button that a gesture under way holds, where it was seen last: for a process
    /// that ends, which does not return from its main loop.
    void releaseAll();

  private:
    class Source;
    class Event;

    CFRef<CGEventRef> release_; // empty unless a gesture holds the button
};

} // namespace orrivane
