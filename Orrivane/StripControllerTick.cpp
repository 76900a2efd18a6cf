#include <Orrivane/StripController.h>

#include <Orrivane/CaptureService.h>
#include <Orrivane/MirrorObstacle.h>
#include <Orrivane/platform/Accessibility.h>
#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/platform/OwnWindows.h>
#include <Orrivane/platform/Screens.h>
#include <Orrivane/platform/UserDefaults.h>

#include <algorithm>
#include <limits>
#include <ranges>
#include <unordered_set>

// One tick, from the first question to the tray. Order matters throughout: each question is asked
// only if those before it let the tick go on.

namespace orrivane {

/// What a tick has decided to show before it captures.
struct StripController::Plan {
    NotchInfo notch;
    std::vector<StatusItemWindow> visible;
};

std::vector<StatusItemWindow> StripController::fit(std::span<const StatusItemWindow> eaten,
                                                   const NotchInfo& notch, double menuWidth) {
    const double room =
        (notch.notchMinX - StripWindow::notchMargin) - (notch.screenMinX + menuWidth + menuMargin);
    double total = 0;
    auto first = eaten.end();
    while (first != eaten.begin()) {
        const double width = std::prev(first)->frame.width();
        if (total + width > room)
            break;
        total += width;
        --first;
    }
    return {first, eaten.end()};
}

Task<> StripController::tick() {
    if (enabled() && isSuspended_) {
        applyIntervalRule();
        co_return;
    }
    const auto planned = plan();
    if (!planned) {
        standDown();
        applyIntervalRule();
        co_return;
    }

    std::vector<std::uint32_t> ids;
    std::ranges::transform(planned->visible, std::back_inserter(ids), &StatusItemWindow::id);
    refreshOwners(planned->visible, {ids.begin(), ids.end()});
    ++tickCount_;
    if (imagesAreDue(ids)) {
        const WeakSelf alive = self_;
        auto images = co_await captures_.captureIcons(ids);
        if (alive.expired())
            co_return;
        cachedImages_ = std::move(images);
    }
    forgetClosedMenu();
    auto mirrored = items(planned->visible);
    // A notification or the switch may have run while the capture was under way.
    if (enabled() && !isSuspended_)
        show(std::move(mirrored), planned->notch);
    else
        standDown();
    applyIntervalRule();
}

std::optional<StripController::Plan> StripController::plan() {
    if (!mayMirror())
        return std::nullopt;
    const auto census = WindowCensus::take(platform_.screens, platform_.windowList);
    const auto eaten = withoutOwnWindows(census.eaten());
    if (eaten.empty() || !census.notch) {
        clearCaches();
        return std::nullopt;
    }
    const auto width = menuWidth();
    if (!width)
        return std::nullopt;
    Plan plan{*census.notch, fit(eaten, *census.notch, *width)};
    if (plan.visible.empty())
        return std::nullopt;
    return plan;
}

bool StripController::mayMirror() {
    struct Answers {
        StripController& self;
        const Platform& platform;
        bool enabled() const { return self.enabled(); }
        std::size_t screenCount() const { return platform.screens.screens().size(); }
        bool displayIsAsleep() const { return platform.screens.mainDisplayIsAsleep(); }
        bool mirrorsOnExternal() const { return platform.userDefaults.boolForKey(externalKey); }
        bool mayCapture() const { return self.captures_.screenCaptureGranted(); }
        bool mayPress() const { return self.captures_.accessibilityTrusted(); }
    };
    return !firstObstacle(Answers{*this, platform_});
}

std::vector<StatusItemWindow>
StripController::withoutOwnWindows(std::vector<StatusItemWindow> eaten) {
    std::unordered_set<std::uint32_t> own;
    for (const auto number : platform_.ownWindows.windowNumbers())
        if (number >= 0 && number <= std::numeric_limits<std::uint32_t>::max())
            own.insert(static_cast<std::uint32_t>(number));
    std::erase_if(eaten, [&](const StatusItemWindow& item) { return own.contains(item.id); });
    return eaten;
}

std::optional<double> StripController::menuWidth() {
    const double now = platform_.mainLoop.now();
    if (!cachedMenuWidth_ || now - menuWidthFetchedAt_ > menuWidthLifetime) {
        cachedMenuWidth_ = IconIdentity::frontmostMenuWidth(platform_.accessibility);
        menuWidthFetchedAt_ = now;
    }
    return cachedMenuWidth_;
}

void StripController::refreshOwners(std::span<const StatusItemWindow> visible,
                                    const std::set<std::uint32_t>& ids) {
    if (ids == lastEatenIDs_)
        return;
    captures_.invalidateWindowCache();
    const auto owners = IconIdentity::resolveOwners(platform_.accessibility);
    const auto screens = platform_.screens.screens();
    ownerByWindowID_.clear();
    for (const auto& item : visible)
        if (const auto owner = IconIdentity::owner(item, owners, screens))
            ownerByWindowID_.insert_or_assign(item.id, *owner);
    lastEatenIDs_ = ids;
}

bool StripController::imagesAreDue(std::span<const std::uint32_t> ids) const {
    constexpr std::int64_t refreshEvery = 3; // ticks
    return tickCount_ % refreshEvery == 1 ||
           !std::ranges::all_of(ids, [&](auto id) { return cachedImages_.contains(id); });
}

void StripController::forgetClosedMenu() {
    if (!openMenuWindowID_)
        return;
    const auto owner = ownerByWindowID_.find(*openMenuWindowID_);
    if (owner == ownerByWindowID_.end() ||
        !IconIdentity::hasOpenMenu(owner->second, platform_.accessibility))
        openMenuWindowID_.reset();
}

std::vector<StripItem> StripController::items(std::span<const StatusItemWindow> visible) {
    const bool secondary = platform_.accessibility.statusItemsHaveSecondaryAction();
    std::vector<StripItem> result;
    result.reserve(visible.size());
    for (const auto& window : visible) {
        StripItem item{window.id, std::nullopt, window.frame.width(), "Unknown", [] {}, nullptr};
        if (const auto image = cachedImages_.find(window.id); image != cachedImages_.end())
            item.image = image->second;
        if (const auto found = ownerByWindowID_.find(window.id); found != ownerByWindowID_.end()) {
            const auto& owner = found->second;
            item.appName = owner.appName.empty() ? "Menu item" : owner.appName;
            item.onPress = pressAction(window.id, owner, &IconIdentity::press);
            if (secondary)
                item.onSecondaryPress = pressAction(window.id, owner, &IconIdentity::showMenu);
        }
        result.push_back(std::move(item));
    }
    return result;
}

void StripController::show(std::vector<StripItem> mirrored, const NotchInfo& notch) {
    if (!stripWindow_)
        stripWindow_ = std::make_unique<StripWindow>(platform_.trayPanel, platform_.screens);
    const auto count = static_cast<std::int64_t>(mirrored.size());
    stripWindow_->show(std::move(mirrored), notch);
    mirroredCount_ = count;
}

std::function<void()> StripController::pressAction(std::uint32_t id, const IconOwner& owner,
                                                   Press press) {
    return [weak = WeakSelf(self_), id, owner, press] {
        if (const auto controller = weak.lock())
            (*controller)->pressItem(id, owner, press);
    };
}

void StripController::pressItem(std::uint32_t id, const IconOwner& owner, Press press) {
    // A second click on the same icon has already closed the menu by itself.
    if (openMenuWindowID_ == id) {
        openMenuWindowID_.reset();
        return;
    }
    press(owner, platform_.accessibility, platform_.log);
    openMenuWindowID_ = id;
}

} // namespace orrivane
