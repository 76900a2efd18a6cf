#include <Orrivane/Diagnosis.h>

#include <Orrivane/CommandLine.h>
#include <Orrivane/IconIdentity.h>
#include <Orrivane/MirrorObstacle.h>
#include <Orrivane/SqueezeEngine.h>
#include <Orrivane/StripController.h>
#include <Orrivane/platform/Accessibility.h>
#include <Orrivane/platform/OwnWindows.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ScreenCapture.h>
#include <Orrivane/platform/Screens.h>
#include <Orrivane/platform/UserDefaults.h>
#include <Orrivane/platform/WindowList.h>
#include <Orrivane/platform/Workspace.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace orrivane {

namespace {

constexpr std::string_view visibleReason = "it is visible";
constexpr std::string_view ownReason = "it is Orrivane's own";
constexpr std::string_view roomReason = "there is no room left of the notch";

std::string describe(MirrorObstacle obstacle) {
    switch (obstacle) {
    case MirrorObstacle::switchedOff:
        return "the tray is switched off";
    case MirrorObstacle::noScreen:
        return "there is no screen";
    case MirrorObstacle::displayAsleep:
        return "the screen is asleep";
    case MirrorObstacle::otherScreen:
        return "another screen is connected and mirroring is switched off meanwhile";
    case MirrorObstacle::mayNotCapture:
        return "the screen may not be captured";
    case MirrorObstacle::mayNotPress:
        return "other programs' items may not be pressed";
    }
    return {};
}

} // namespace

Diagnosis Diagnosis::take(const Platform& platform, GlobalPreferences& preferences,
                          std::optional<std::int32_t> runningProcess) {
    Diagnosis result;
    result.runningProcess = runningProcess;
    result.version = CommandLine::version();
    result.bundle = platform.workspace.versionStrings();
    result.describeScreens(platform.screens);
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
    result.menuBarOwner = platform.accessibility.menuBarOwningApplication();
    result.frontmost = platform.accessibility.frontmostApplication();
    const auto owners = IconIdentity::resolveOwners(platform.accessibility);
    for (const auto& window : census.items) {
        Item item;
        item.window = window;
        if (const auto owner = IconIdentity::owner(window, owners, result.screens)) {
            item.application = owner->appName;
            item.process = owner->pid;
        }
        result.items.push_back(std::move(item));
    }
    result.listWindows(platform.windowList);
    result.extrasBars = ExtrasBar::readAll(platform.accessibility, platform.mainLoop);
    result.ownWindows = platform.ownWindows.windowNumbers();
    result.giveReasons();
    return result;
}

void Diagnosis::describeScreens(Screens& port) {
    screens = port.screens();
    const auto main = port.mainScreen();
    for (const auto& screen : screens)
        screenPlaces.push_back({port.visibleFrame(screen), main == screen});
}

void Diagnosis::listWindows(WindowList& list) {
    const auto isNearATop = [&](const Rect& bounds) {
        return std::ranges::any_of(screens, [&](const ScreenDescription& screen) {
            const double top = screens.front().frame.maxY() - screen.frame.maxY();
            return std::abs(bounds.minY() - top) < topBand;
        });
    };
    for (auto& entry : list.ownedWindows())
        if (entry.window.bounds && isNearATop(*entry.window.bounds))
            windows.push_back(std::move(entry));
}

void Diagnosis::giveReasons() {
    const auto isOwn = [&](const Item& item) {
        return std::ranges::find(ownWindows, item.window.id) != ownWindows.end() ||
               (item.process > 0 && item.process == runningProcess);
    };
    std::vector<StatusItemWindow> hidden;
    for (const auto& item : items)
        if (item.window.isEaten && !isOwn(item))
            hidden.push_back(item.window);
    std::set<std::uint32_t> shown;
    if (notch && menuWidth)
        for (const auto& window : StripController::fit(hidden, *notch, *menuWidth))
            shown.insert(window.id);
    const auto inTheWay = obstacle();
    for (auto& item : items) {
        if (!item.window.isEaten)
            item.reason = visibleReason;
        else if (isOwn(item))
            item.reason = ownReason;
        else if (!inTheWay.empty())
            item.reason = inTheWay;
        else if (!shown.contains(item.window.id))
            item.reason = roomReason;
    }
}

std::string Diagnosis::obstacle() const {
    struct Answers {
        const Diagnosis& seen;
        bool enabled() const { return seen.stripEnabled; }
        std::size_t screenCount() const { return seen.screens.size(); }
        bool displayIsAsleep() const { return seen.displayAsleep; }
        bool mirrorsOnExternal() const { return seen.mirrorOnExternal; }
        bool mayCapture() const { return seen.screenCaptureGranted; }
        bool mayPress() const { return seen.accessibilityTrusted; }
    };
    if (const auto obstacle = firstObstacle(Answers{*this}))
        return describe(*obstacle);
    // What a tick finds out on its way.
    if (!notch)
        return "no notch is known";
    if (!menuWidth)
        return "the width of the application's menus is unknown";
    return {};
}

} // namespace orrivane
