#pragma once

#include <Orrivane/WindowCensus.h>

#include <cmath>
#include <span>
#include <vector>

namespace orrivane {

/// The census written down the plainest way, however slow: for comparison with the real one.
inline CensusResult referenceCensus(std::span<const ScreenDescription> screens,
                                    std::span<const WindowListEntry> all,
                                    std::span<const WindowListEntry> onscreen) {
    CensusResult result;
    double line = 0;
    for (const auto& screen : screens) {
        if (!(screen.safeAreaTop > 0))
            continue;
        line = screens[0].frame.maxY() - screen.frame.maxY();
        const auto& left = screen.auxiliaryTopLeftArea;
        const auto& right = screen.auxiliaryTopRightArea;
        if (left && right)
            result.notch = NotchInfo{screen.frame.width(), screen.frame.minX(), screen.safeAreaTop,
                                     left->maxX(), right->minX()};
        break;
    }
    for (const auto& entry : all) {
        if (entry.layer != 25 || !entry.number || !entry.bounds)
            continue;
        const Rect& frame = *entry.bounds;
        if (std::abs(frame.origin.y - line) > 2 || frame.height() > 40 || frame.width() > 400)
            continue;
        if (result.notch &&
            (frame.maxX() > result.notch->screenMinX + result.notch->screenWidth + 1 ||
             frame.minX() < result.notch->screenMinX - 1))
            continue;
        bool known = false;
        for (const auto& item : result.items)
            known = known || item.id == *entry.number;
        if (known)
            continue;
        StatusItemWindow item{*entry.number, frame, entry.onscreen == true, false};
        for (const auto& other : onscreen)
            item.isOnscreen = item.isOnscreen || other.number == entry.number;
        if (result.notch)
            item.isEaten =
                frame.minX() < result.notch->notchMaxX && frame.maxX() > result.notch->notchMinX;
        // Behind the last one that does not lie farther right.
        auto place = result.items.end();
        while (place != result.items.begin() && std::prev(place)->frame.minX() > frame.minX())
            --place;
        result.items.insert(place, item);
    }
    return result;
}

} // namespace orrivane
