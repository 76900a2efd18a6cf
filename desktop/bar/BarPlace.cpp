#include <desktop/bar/BarPlace.h>

namespace orrivane::desktop {

BarPlace BarPlace::of(const std::vector<QRect>& monitors, const std::vector<std::uint32_t>& cutouts,
                      int plainHeight) {
    const auto number = [&](std::size_t place) {
        return static_cast<int>(cutouts[place] & 0x7fff);
    };
    for (const QRect& screen : monitors) {
        for (std::size_t i = 0; i + 3 < cutouts.size(); i += 4) {
            const QRect told(number(i), number(i + 1), number(i + 2), number(i + 3));
            const QRect notch = told.intersected(screen);
            // What is deeper than half a screen is no notch.
            if (notch.isEmpty() || notch.top() != screen.top() ||
                notch.height() > screen.height() / 2)
                continue;
            return {screen, {screen.topLeft(), QSize(screen.width(), notch.height())}, notch};
        }
    }
    const QRect screen = monitors.front();
    return {screen, {screen.topLeft(), QSize(screen.width(), plainHeight)}, {}};
}

} // namespace orrivane::desktop
