#pragma once

#include <cstdint>
#include <vector>

#include <QRect>

namespace orrivane::desktop {

/// Where the bar and the notch in it lie; pixels of the root window.
struct BarPlace {
    QRect screen;
    QRect bar;
    QRect notch; ///< empty without one

    friend bool operator==(const BarPlace&, const BarPlace&) = default;

    /// `monitors`: the main one first, not empty. `cutouts`: x, y, width and height of each, as the
    /// hardware tells them; the bar goes to the first monitor with a cutout at its top edge and is
    /// as high as that, else to the main one, `plainHeight` pixels high.
    static BarPlace of(const std::vector<QRect>& monitors,
                       const std::vector<std::uint32_t>& cutouts, int plainHeight);
};

} // namespace orrivane::desktop
