#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane {

/// The settings of xfce4-panel's tray plugin that decide how much room an icon takes; absent ones
/// are not set, and the plugin's own default counts.
struct XfceTraySettings {
    std::optional<int> iconSize;     ///< pixels; 0: as large as the panel lets it be
    std::optional<bool> squareIcons; ///< every icon has a cell as wide as the panel is high
    std::optional<bool> singleRow;

    friend bool operator==(const XfceTraySettings&, const XfceTraySettings&) = default;
};

/// What is known of the plugin's arithmetic, as plain values.
struct XfceTray {
    /// What the user sees of the tray, in pixels.
    struct Measures {
        int iconWidth = 0; ///< of any icon; 0: there is none
        int barHeight = 0;
    };

    /// `own` changed so that every icon takes at least `reduction` pixels less room, as far as
    /// icons stay recognisable: gaps go first, then the icons become smaller. `own` itself when
    /// there is nothing to take away.
    static XfceTraySettings tightened(const XfceTraySettings& own, int reduction,
                                      const Measures& measures);

    static constexpr int defaultIconSize = 22; ///< pixels
    static constexpr int gap = 2;              ///< pixels between two icons that are not square
    static constexpr int smallestIcon = 12;    ///< pixels

    /// One icon as it stands, names as the plugin writes them.
    struct Icon {
        std::string name;
        double middle = 0; ///< any unit, growing to the right
    };

    /// The plugin's list of names, which it lays its icons out by from left to right, changed so
    /// that the icon `moved` stands where the middles pass `toX`. Absent when that changes nothing,
    /// or cannot be said by names.
    static std::optional<std::vector<std::string>> reordered(std::vector<std::string> known,
                                                             const std::vector<Icon>& icons,
                                                             std::size_t moved, double toX);
};

} // namespace orrivane
