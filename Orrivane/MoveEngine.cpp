#include <Orrivane/MoveEngine.h>

#include <Orrivane/platform/EventPoster.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ShellPlatform.h>
#include <Orrivane/platform/SystemLog.h>
#include <Orrivane/support/Awaiters.h>

#include <string>
#include <utility>

namespace orrivane {

namespace {

/// Smoothstep: 0 at 0 and exactly 1 at 1, at rest at both ends.
double eased(double t) {
    return t * t * (3.0 - 2.0 * t);
}

bool moveUnderWay = false;

/// The mark of the one move under way. It lives in the move's frame, so a move that is dropped with
/// its loop leaves no mark behind.
class MoveMark {
  public:
    MoveMark() { moveUnderWay = true; }
    MoveMark(const MoveMark&) = delete;
    MoveMark& operator=(const MoveMark&) = delete;
    ~MoveMark() { moveUnderWay = false; }
};

} // namespace

bool MoveEngine::isMoving() {
    return moveUnderWay;
}

Task<bool> MoveEngine::move(StatusItemWindow item, double toX) {
    return move(item, toX, ShellPlatform::installed().eventPoster, Platform::installed().log);
}

// The pauses are never shortened or merged: menu bars follow a drag only at a hand's pace.
Task<bool> MoveEngine::move(StatusItemWindow item, double toX, EventPoster& poster,
                            SystemLog& log) {
    if (moveUnderWay)
        co_return false;
    const MoveMark mark;
    const Point start{item.frame.midX(), item.frame.midY()};
    const Point end{toX, start.y};
    const auto source = poster.createSource();

    if (!post(MouseEventType::leftMouseDown, start, source.get(), poster, log))
        co_return false;
    Sleep pressed(pauseAfterMouseDown);
    co_await pressed;
    for (const Point& point : dragPoints(start, toX)) {
        // No release then: what is still held ends with the source, where the platform holds it.
        if (!post(MouseEventType::leftMouseDragged, point, source.get(), poster, log))
            co_return false;
        Sleep dragged(pauseAfterDragStep);
        co_await dragged;
    }
    Sleep arrived(pauseBeforeMouseUp);
    co_await arrived;
    co_return post(MouseEventType::leftMouseUp, end, source.get(), poster, log);
}

bool MoveEngine::post(MouseEventType type, Point point, EventSource* source, EventPoster& poster,
                      SystemLog& log) {
    const auto event = poster.createMouseEvent(source, type, point);
    if (!event) {
        log.write("MoveEngine: failed to create CGEvent of type " +
                  std::to_string(static_cast<std::uint32_t>(type)));
        return false;
    }
    poster.setFlags(*event, commandFlag);
    poster.post(*event);
    return true;
}

std::array<Point, 12> MoveEngine::dragPoints(Point start, double toX) {
    std::array<Point, 12> points;
    const double distance = toX - start.x;
    double step = 0;
    for (Point& point : points) {
        step += 1;
        const double progress = eased(step / static_cast<double>(points.size()));
        point = {start.x + distance * progress, start.y};
    }
    return points;
}

} // namespace orrivane
