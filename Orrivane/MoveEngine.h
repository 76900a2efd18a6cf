#pragma once

#include <Orrivane/WindowCensus.h>
#include <Orrivane/support/Geometry.h>
#include <Orrivane/support/Task.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace orrivane {

class EventPoster;
class EventSource;
class SystemLog;
enum class MouseEventType : std::uint32_t;

/// Moves a real status item by playing the gesture a user would make: a sideways drag with Command
/// held. Nothing outlives a move but the mark that one is under way.
struct MoveEngine {
    /// Drags `item` from the middle of its frame to `toX` (global points) at the same height. True
    /// when every event was posted; what the menu bar made of them is for a new census to tell. An
    /// event that cannot be made is logged and ends the move. A gesture once begun is completed:
    /// cancelling the task only cuts its pauses short. The hardware has one pointer, so a move
    /// asked for while another is under way, whoever began it, posts nothing and is false.
    static Task<bool> move(StatusItemWindow item, double toX); ///< on the installed platform
    static Task<bool> move(StatusItemWindow item, double toX, EventPoster& poster, SystemLog& log);
    /// Whether a move is under way anywhere in the process.
    [[nodiscard]] static bool isMoving();

    /// Where the twelve drag events lie between the press at `start` and the release at
    /// (`toX`, `start.y`). The way is horizontal and eased in and out, so the first step is a short
    /// one and the last one reaches the target. Global points, top-left origin, y down. A target
    /// under the start gives twelve equal points: the gesture is played all the same.
    static std::array<Point, 12> dragPoints(Point start, double toX);

    static constexpr std::uint64_t commandFlag = 0x100000;
    static constexpr std::size_t dragSteps = 12;
    static constexpr double pauseAfterMouseDown = 0.150; ///< seconds
    static constexpr double pauseAfterDragStep = 0.025;  ///< seconds
    static constexpr double pauseBeforeMouseUp = 0.100;  ///< seconds, after that of the last step

  private:
    static bool post(MouseEventType type, Point point, EventSource* source, EventPoster& poster,
                     SystemLog& log);
};

} // namespace orrivane
