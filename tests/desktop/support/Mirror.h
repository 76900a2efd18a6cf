#pragma once

#include "Desktop.h"
#include "WaitFor.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace orrivane::e2e {

/// What the program ought to show on a desktop, worked out from the server's own tree, and what it
/// shows.
class Mirror {
  public:
    explicit Mirror(Desktop& desktop, double scale = 1)
        : desktop_(desktop)
        , scale_(scale) {}

    /// Icons of others that the first cutout overlaps, left to right.
    std::vector<WindowState> hiddenIcons() {
        std::vector<WindowState> hidden;
        const PixelRect cutout = desktop_.observer().cutouts().at(0);
        for (const auto& icon : desktop_.foreignIcons())
            if (icon.isViewable() && icon.area.x < cutout.right() && icon.area.right() > cutout.x)
                hidden.push_back(icon);
        return hidden;
    }

    /// The strip's place for a row of these icons.
    PixelRect expectedArea(const std::vector<WindowState>& icons) {
        const PixelRect cutout = desktop_.observer().cutouts().at(0);
        int width = 0;
        for (const auto& icon : icons)
            width += icon.area.width;
        const int right = cutout.x - static_cast<int>(std::lround(6 * scale_));
        return {right - width, cutout.y, width, cutout.height};
    }

    /// The strip shows exactly the hidden icons, placed to the pixel.
    bool isRight() {
        const auto strip = desktop_.strip();
        const auto icons = hiddenIcons();
        return icons.empty() ? !strip : strip && strip->area == expectedArea(icons);
    }
    testing::AssertionResult waitUntilRight() {
        return waitFor("the strip mirrors what the notch hides", [&] { return isRight(); });
    }

    /// The cell that mirrors `icon`, on the root.
    PixelRect cellOf(xcb_window_t icon) {
        const auto icons = hiddenIcons();
        PixelRect cell = expectedArea(icons);
        for (const auto& each : icons) {
            cell.width = each.area.width;
            if (each.id == icon)
                return cell;
            cell.x += cell.width;
        }
        throw std::runtime_error("that icon is not mirrored");
    }

    /// The largest difference of a colour channel between a cell and its icon, both as the screen
    /// shows them, in the rows of the icon that lie in the band.
    int differenceOf(const WindowState& icon) {
        auto& observer = desktop_.observer();
        const PixelRect cell = cellOf(icon.id);
        const PixelRect seen = icon.area.intersection({0, cell.y, 1 << 15, cell.height});
        const Image real = observer.imageOfRoot(seen);
        const Image mirrored = observer.imageOfRoot({cell.x, seen.y, seen.width, seen.height});
        int worst = 0;
        for (std::size_t i = 0; i < real.pixels.size(); ++i)
            for (unsigned shift = 0; shift < 24; shift += 8)
                worst = std::max(worst,
                                 std::abs(static_cast<int>((real.pixels[i] >> shift) & 0xffU) -
                                          static_cast<int>((mirrored.pixels[i] >> shift) & 0xffU)));
        return worst;
    }

  private:
    Desktop& desktop_;
    double scale_;
};

} // namespace orrivane::e2e
