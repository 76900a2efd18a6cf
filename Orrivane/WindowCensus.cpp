#include <Orrivane/WindowCensus.h>

#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/Screens.h>
#include <Orrivane/platform/WindowList.h>
#include <Orrivane/support/IdIndex.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace orrivane {

namespace {

// Points. What is larger is no icon, and what is farther off is not in the bar.
constexpr double lineSlack = 2.0;
constexpr double maximumHeight = 40.0;
constexpr double maximumWidth = 400.0;
constexpr double screenSlack = 1.0;
constexpr std::size_t usualCount = 16; // icons in a bar

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

// Comparisons with a value that is no number would pass every test and upset the order.
bool isRectangle(const Rect& rect) {
    return !std::isnan(rect.origin.x) && !std::isnan(rect.origin.y) &&
           !std::isnan(rect.size.width) && !std::isnan(rect.size.height);
}

bool isStatusItem(const WindowListEntry& entry, double line,
                  const std::optional<NotchInfo>& notch) {
    if (entry.layer != WindowCensus::statusLayer || !entry.number || !entry.bounds ||
        !isRectangle(*entry.bounds))
        return false;
    const Rect& bounds = *entry.bounds;
    if (std::abs(bounds.origin.y - line) > lineSlack || bounds.height() > maximumHeight ||
        bounds.width() > maximumWidth)
        return false;
    return !notch || (bounds.maxX() <= notch->screenMinX + notch->screenWidth + screenSlack &&
                      bounds.minX() >= notch->screenMinX - screenSlack);
}

/// An entry that passed every test; what it is sorted by is at hand.
struct Kept {
    double leftEdge;
    const WindowListEntry* entry;
    bool isOnscreen;
};

// Stable.
void sortByLeftEdge(std::vector<Kept>& kept) {
    constexpr auto place = &Kept::leftEdge;
    if (std::ranges::is_sorted(kept, {}, place))
        return;
    const auto doesNotDescend = std::not_fn(std::ranges::greater{});
    // A tray that adds on the left lists its icons the other way round, no two at one place.
    if (std::ranges::adjacent_find(kept, doesNotDescend, place) == kept.end())
        std::ranges::reverse(kept);
    else
        std::ranges::stable_sort(kept, {}, place);
}

} // namespace

std::vector<StatusItemWindow> CensusResult::eaten() const {
    std::vector<StatusItemWindow> result;
    std::ranges::copy_if(items, std::back_inserter(result), &StatusItemWindow::isEaten);
    return result;
}

const ScreenDescription* WindowCensus::notchedScreen(std::span<const ScreenDescription> screens) {
    const auto found = std::ranges::find_if(
        screens, [](const ScreenDescription& screen) { return screen.safeAreaTop > 0; });
    return found == screens.end() ? nullptr : &*found;
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

    IdIndex seen;
    std::vector<Kept> kept;
    bool someHidden = false;
    for (const auto& entry : all) {
        if (!isStatusItem(entry, line, result.notch) || !seen.insert(*entry.number))
            continue;
        if (kept.empty())
            kept.reserve(usualCount);
        const bool visible = entry.onscreen.value_or(false);
        kept.push_back({entry.bounds->minX(), &entry, visible});
        someHidden = someHidden || !visible;
    }
    // Nothing else than that they are visible can be learned there.
    if (someHidden)
        for (const auto& entry : onscreen)
            if (const auto position = entry.number ? seen.find(*entry.number) : std::nullopt)
                kept[*position].isOnscreen = true;
    sortByLeftEdge(kept);

    result.items.reserve(kept.size());
    for (const Kept& item : kept) {
        const Rect& bounds = *item.entry->bounds;
        const bool eaten = result.notch && bounds.minX() < result.notch->notchMaxX &&
                           bounds.maxX() > result.notch->notchMinX;
        result.items.push_back({*item.entry->number, bounds, item.isOnscreen, eaten});
    }
    return result;
}

} // namespace orrivane
