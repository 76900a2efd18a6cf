#pragma once

#include <Orrivane/support/Geometry.h>

#include <optional>

namespace orrivane {

/// Starts the application and holds its status item, popover and window.
struct AppDelegate {
    /// The window's frame after its content was asked to be `requested` points high: the top edge
    /// and the width stay, the height follows as far as the screen allows. `frame` is in global
    /// points, y up; `contentHeight` is the present height of the content and `chromeHeight` what
    /// the title bar adds to it; `visibleHeight` is that of the screen's visible frame, absent when
    /// there is no screen. Absent when nothing changes: the content is within 4 points of its
    /// target, or the target is not a finite height.
    static std::optional<Rect> fittedFrame(const Rect& frame, double contentHeight,
                                           double chromeHeight, std::optional<double> visibleHeight,
                                           double requested);
};

} // namespace orrivane
