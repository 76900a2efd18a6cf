#include <Orrivane/AppDelegate.h>

#include <algorithm>
#include <cmath>

namespace orrivane {

namespace {

constexpr double screenMargin = 24;
constexpr double heightWithoutScreen = 776;
/// Smaller differences are left alone, so that the window does not tremble after every layout.
constexpr double tolerance = 4;

} // namespace

std::optional<Rect> AppDelegate::fittedFrame(const Rect& frame, double contentHeight,
                                             double chromeHeight,
                                             std::optional<double> visibleHeight,
                                             double requested) {
    const double tallest = visibleHeight ? *visibleHeight - screenMargin : heightWithoutScreen;
    const double target = std::min(requested, tallest);
    // A measurement that went wrong must not reach the window.
    if (!std::isfinite(target) || std::abs(contentHeight - target) <= tolerance)
        return std::nullopt;
    const double height = target + chromeHeight;
    return Rect{{frame.minX(), frame.maxY() - height}, {frame.width(), height}};
}

} // namespace orrivane
