#include <Orrivane/Diagnosis.h>

#include <Orrivane/CommandLine.h>
#include <Orrivane/SqueezeEngine.h>
#include <Orrivane/StripController.h>
#include <Orrivane/platform/Accessibility.h>
#include <Orrivane/platform/OwnWindows.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ScreenCapture.h>
#include <Orrivane/platform/Screens.h>
#include <Orrivane/platform/UserDefaults.h>
#include <Orrivane/platform/WindowList.h>

#include <algorithm>
#include <set>

namespace orrivane {

namespace {

constexpr std::string_view visibleReason = "it is visible";
constexpr std::string_view ownReason = "it is Orrivane's own";
constexpr std::string_view roomReason = "there is no room left of the notch";

std::set<std::int64_t> numbers(OwnWindows& windows) {
    const auto all = windows.windowNumbers();
    return {all.begin(), all.end()};
}

std::set<std::uint32_t> mirrored(const CensusResult& census, const std::set<std::int64_t>& own,
                                 std::optional<double> menuWidth) {
    std::set<std::uint32_t> ids;
    if (!census.notch || !menuWidth)
        return ids;
    auto eaten = census.eaten();
    std::erase_if(eaten, [&](const auto& item) { return own.contains(item.id); });
    for (const auto& item : StripController::fit(eaten, *census.notch, *menuWidth))
        ids.insert(item.id);
    return ids;
}

} // namespace

Diagnosis Diagnosis::take(const Platform& platform, GlobalPreferences& preferences) {
    Diagnosis result;
    result.version = CommandLine::version();
    result.screens = platform.screens.screens();
    result.displayAsleep = platform.screens.mainDisplayIsAsleep();
    result.screenCaptureGranted = platform.screenCapture.preflightAccess();
    result.accessibilityTrusted = platform.accessibility.isTrusted();
    result.stripEnabled = platform.userDefaults.boolForKey(StripController::enabledKey);
    result.mirrorOnExternal = platform.userDefaults.boolForKey(StripController::externalKey);
    const auto squeeze = SqueezeEngine::read(preferences);
    result.spacing = squeeze.spacing;
    result.padding = squeeze.padding;

    const auto census = WindowCensus::take(platform.screens, platform.windowList);
    result.notch = census.notch;
    if (result.accessibilityTrusted)
        result.menuWidth = IconIdentity::frontmostMenuWidth(platform.accessibility);
    const auto owners = IconIdentity::resolveOwners(platform.accessibility);
    const auto own = numbers(platform.ownWindows);
    const auto shown = mirrored(census, own, result.menuWidth);
    const auto obstacle = result.obstacle();
    for (const auto& window : census.items) {
        Item item;
        item.window = window;
        if (const auto owner = IconIdentity::owner(window, owners, result.screens)) {
            item.application = owner->appName;
            item.process = owner->pid;
        }
        if (!window.isEaten)
            item.reason = visibleReason;
        else if (own.contains(window.id))
            item.reason = ownReason;
        else if (!obstacle.empty())
            item.reason = obstacle;
        else if (!shown.contains(window.id))
            item.reason = roomReason;
        result.items.push_back(std::move(item));
    }
    return result;
}

// In the order in which a tick asks.
std::string Diagnosis::obstacle() const {
    if (!stripEnabled)
        return "the tray is switched off";
    if (screens.empty())
        return "there is no screen";
    if (displayAsleep)
        return "the screen is asleep";
    if (screens.size() > 1 && !mirrorOnExternal)
        return "another screen is connected and mirroring is switched off meanwhile";
    if (!screenCaptureGranted)
        return "the screen may not be captured";
    if (!accessibilityTrusted)
        return "other programs' items may not be pressed";
    if (!notch)
        return "no notch is known";
    if (!menuWidth)
        return "the width of the application's menus is unknown";
    return {};
}

} // namespace orrivane
