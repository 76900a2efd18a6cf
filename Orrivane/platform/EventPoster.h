#pragma once

#include <Orrivane/support/Geometry.h>

#include <cstdint>
#include <memory>

namespace orrivane {

/// The numbers are the event system's own.
enum class MouseEventType : std::uint32_t {
    leftMouseDown = 1,
    leftMouseUp = 2,
    mouseMoved = 5,
    leftMouseDragged = 6,
};

/// Where synthetic events come from. Where modifiers are keys that have to be held (X11),
/// destroying it lets go of them and of the button; where they are flags of each event (macOS), it
/// posts nothing.
class EventSource {
  public:
    virtual ~EventSource() = default;
};

class MouseEvent {
  public:
    virtual ~MouseEvent() = default;
};

/// Synthetic mouse input, posted where hardware input enters the system.
class EventPoster {
  public:
    virtual ~EventPoster() = default;

    /// Null when the system refuses; events may still be made without a source.
    [[nodiscard]] virtual std::unique_ptr<EventSource> createSource() = 0;
    /// A left-button event at `position`, global top-left-origin points; null on failure.
    [[nodiscard]] virtual std::unique_ptr<MouseEvent>
    createMouseEvent(EventSource* source, MouseEventType type, Point position) = 0;
    /// Modifier flags as the event system numbers them (Command is 0x100000).
    virtual void setFlags(MouseEvent& event, std::uint64_t flags) = 0;
    virtual void post(const MouseEvent& event) = 0;
};

} // namespace orrivane
