#pragma once

#include <Orrivane/WindowCensus.h>

#include <optional>
#include <vector>

namespace orrivane {

/// The attached screens. Main thread only.
class Screens {
  public:
    virtual ~Screens() = default;

    /// Every screen in the system's order, the primary one first; empty when there is none.
    /// Frames in bottom-left-origin points.
    [[nodiscard]] virtual std::vector<ScreenDescription> screens() = 0;

    /// The screen that has the keyboard focus, in the same terms; absent without screens.
    [[nodiscard]] virtual std::optional<ScreenDescription> mainScreen() = 0;

    /// The part of `screen` that bars and docks leave free, bottom-left-origin points.
    [[nodiscard]] virtual Rect visibleFrame(const ScreenDescription& screen) = 0;

    [[nodiscard]] virtual bool mainDisplayIsAsleep() = 0;
};

} // namespace orrivane
