#pragma once

#include <Orrivane/WindowCensus.h>
#include <Orrivane/view/View.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orrivane {

/// One status item as the preview draws it.
struct PreviewIcon {
    std::uint32_t id = 0;       ///< window number; the identity of the drawn tile
    double width = 0;           ///< points, as the census measured it
    std::optional<Image> image; ///< absent: never captured

    friend bool operator==(const PreviewIcon&, const PreviewIcon&) = default;
};

/// An icon in its place on the previewed bar.
struct LaidOutIcon {
    PreviewIcon icon;
    double x = 0;       ///< left edge: global points, or from the leftmost icon without a notch
    double width = 0;   ///< points, after the simulated spacing
    bool eaten = false; ///< the notch would cover part of it

    friend bool operator==(const LaidOutIcon&, const LaidOutIcon&) = default;
};

/// The right-hand part of the menu bar as it is, or as it would be at another spacing.
struct MenuBarPreview {
    std::optional<NotchInfo> notch;
    std::vector<PreviewIcon> icons; ///< left to right
    std::optional<int> simulatedSpacing;

    /// A canvas as wide as the place, `height` points high.
    [[nodiscard]] View body() const;
    /// The picture at this size: the whole bar, to scale, centred between top and bottom. Icons
    /// that the notch would hide are dimmed, framed in red and drawn over it.
    [[nodiscard]] Drawing drawing(Size size) const;

    friend bool operator==(const MenuBarPreview&, const MenuBarPreview&) = default;

    static constexpr double height = 34; ///< points

    /// Packs `icons`, given left to right, edge to edge against the right end of the notched
    /// screen, and keeps their order. A `simulatedSpacing` below the system's 16 shortens the whole
    /// row by 6 points for each step, in equal shares but leaving every icon at least 14 points;
    /// 16 and more, like none at all, leaves the measured widths. Without a notch the row starts at
    /// 0 and nothing is eaten. An icon that only touches an edge of the notch is not eaten.
    static std::vector<LaidOutIcon> layout(const std::optional<NotchInfo>& notch,
                                           std::span<const PreviewIcon> icons,
                                           std::optional<int> simulatedSpacing);

    /// How many icons of that layout the notch would hide.
    static int projectedEatenCount(const std::optional<NotchInfo>& notch,
                                   std::span<const PreviewIcon> icons,
                                   std::optional<int> simulatedSpacing);
};

} // namespace orrivane
