#include <Orrivane/WindowCensus.h>

#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/Screens.h>
#include <Orrivane/platform/WindowList.h>

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace orrivane {

namespace {

constexpr std::int64_t statusWindowLayer = 25;
constexpr double lineSlack = 2.0;
constexpr double maximumHeight = 40.0;
constexpr double maximumWidth = 400.0;
constexpr double screenSlack = 1.0;

const ScreenDescription* notchedScreen(std::span<const ScreenDescription> screens) {
    const auto found = std::ranges::find_if(
        screens, [](const ScreenDescription& screen) { return screen.safeAreaTop > 0; });
    return found == screens.end() ? nullptr : &*found;
}

std::optional<NotchInfo> notchOf(const ScreenDescription* screen) {
    if (!screen || !screen->auxiliaryTopLeftArea || !screen->auxiliaryTopRightArea)
        return std::nullopt;
    return NotchInfo{screen->frame.width(), screen->frame.minX(), screen->safeAreaTop,
                     screen->auxiliaryTopLeftArea->maxX(), screen->auxiliaryTopRightArea->minX()};
}

// The top of the bar that the census looks at, in the window list's coordinates.
double menuBarLine(std::span<const ScreenDescription> screens, const ScreenDescription* notched) {
    if (screens.empty())
        return 0;
    const auto& primary = screens.front();
    const auto& reference = notched ? *notched : primary;
    return primary.frame.maxY() - reference.frame.maxY();
}

bool isStatusItem(const WindowListEntry& entry, double line,
                  const std::optional<NotchInfo>& notch) {
    if (entry.layer != statusWindowLayer || !entry.number || !entry.bounds)
        return false;
    const Rect& bounds = *entry.bounds;
    if (std::abs(bounds.origin.y - line) > lineSlack || bounds.height() > maximumHeight ||
        bounds.width() > maximumWidth)
        return false;
    return !notch || (bounds.maxX() <= notch->screenMinX + notch->screenWidth + screenSlack &&
                      bounds.minX() >= notch->screenMinX - screenSlack);
}

} // namespace

std::vector<StatusItemWindow> CensusResult::eaten() const {
    std::vector<StatusItemWindow> result;
    std::ranges::copy_if(items, std::back_inserter(result), &StatusItemWindow::isEaten);
    return result;
}

CensusResult WindowCensus::take() {
    const auto& platform = Platform::installed();
    return take(platform.screens, platform.windowList);
}

CensusResult WindowCensus::take(Screens& screens, WindowList& windows) {
    const auto descriptions = screens.screens();
    const auto all = windows.allWindows();
    const auto onscreen = windows.onscreenWindows();
    return take(descriptions, all, onscreen);
}

CensusResult WindowCensus::take(std::span<const ScreenDescription> screens,
                                std::span<const WindowListEntry> all,
                                std::span<const WindowListEntry> onscreen) {
    const ScreenDescription* notched = notchedScreen(screens);
    const double line = menuBarLine(screens, notched);
    CensusResult result{notchOf(notched), {}};

    std::unordered_set<std::uint32_t> onscreenNumbers;
    onscreenNumbers.reserve(onscreen.size());
    for (const auto& entry : onscreen)
        if (entry.number)
            onscreenNumbers.insert(*entry.number);

    std::unordered_set<std::uint32_t> seen;
    for (const auto& entry : all) {
        if (!isStatusItem(entry, line, result.notch) || !seen.insert(*entry.number).second)
            continue;
        const Rect& bounds = *entry.bounds;
        const bool eaten = result.notch && bounds.minX() < result.notch->notchMaxX &&
                           bounds.maxX() > result.notch->notchMinX;
        const bool visible =
            onscreenNumbers.contains(*entry.number) || entry.onscreen.value_or(false);
        result.items.push_back({*entry.number, bounds, visible, eaten});
    }
    std::ranges::stable_sort(result.items, {},
                             [](const StatusItemWindow& item) { return item.frame.minX(); });
    return result;
}

} // namespace orrivane
