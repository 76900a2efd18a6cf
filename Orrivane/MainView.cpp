#include <Orrivane/MainView.h>

#include <Orrivane/NotificationName.h>
#include <Orrivane/StripController.h>
#include <Orrivane/UpdateController.h>
#include <Orrivane/platform/OwnWindows.h>
#include <Orrivane/platform/UserDefaults.h>
#include <Orrivane/support/Awaiters.h>
#include <Orrivane/support/NotificationCenter.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace orrivane {

std::shared_ptr<MainView> MainView::create(bool inWindow, const Platform& platform,
                                           const ShellPlatform& shell, const Services& services,
                                           SetRoot setRoot) {
    const std::shared_ptr<MainView> view(
        new MainView(inWindow, platform, shell, services, std::move(setRoot)));
    view->observe();
    view->render();
    return view;
}

MainView::MainView(bool inWindow, const Platform& platform, const ShellPlatform& shell,
                   const Services& services, SetRoot setRoot)
    : inWindow_(inWindow)
    , platform_(platform)
    , shell_(shell)
    , services_(services)
    , state_(AppState::create(platform, shell, services.captures))
    , arrange_(std::make_shared<ArrangeView>(platform, services.captures, services.mover))
    , setRoot_(std::move(setRoot))
    , redraw_(platform.mainLoop, [this] { render(); }) {
    platform_.userDefaults.registerDefault(showStatusItemKey, true);
    platform_.userDefaults.registerDefault(StripController::externalKey, true);
}

MainView::~MainView() {
    disappear();
}

void MainView::observe() {
    const auto redraw = [this] { redraw_.request(); };
    observations_.push_back(state_->observe(redraw));
    observations_.push_back(arrange_->observe(redraw));
    observations_.push_back(services_.updates.observe(redraw));
    observations_.push_back(platform_.userDefaults.onChange([this] { defaultsChanged(); }));
}

void MainView::render() {
    setRoot_(body());
}

void MainView::begin(Task<> task) {
    start(platform_.mainLoop, std::move(task));
}

void MainView::appear() {
    if (shown_)
        return;
    shown_ = std::make_shared<int>();
    stripEnabled_ = services_.strip.enabled();
    squeezeLimitation_ = services_.squeezeLimitation ? services_.squeezeLimitation() : "";
    arrangeWasExpanded_ = false;
    defaultsChanged();
    cycle_ = start(platform_.mainLoop, refreshCycle(weak_from_this(), shown_));
}

void MainView::disappear() {
    shown_.reset();
    cycle_.cancel();
}

Task<> MainView::refreshCycle(std::weak_ptr<MainView> view, std::weak_ptr<int> shown) {
    while (!shown.expired()) {
        if (auto self = view.lock();
            self && (!self->inWindow_ || self->platform_.ownWindows.mainViewWindowIsVisible()))
            co_await refreshOnce(std::move(self));
        Sleep pause(refreshInterval);
        co_await pause;
    }
}

Task<> MainView::refreshOnce(std::shared_ptr<MainView> view) {
    const auto self = std::move(view);
    self->accessibilityTrusted_ = self->services_.captures.accessibilityTrusted();
    self->redraw_.request();
    co_await self->state_->refresh();
}

void MainView::contentHeightChanged(double height) {
    if (!inWindow_ || contentHeight_ == height)
        return;
    contentHeight_ = height;
    services_.notifications.post(NotificationName::orrivaneContentHeight,
                                 {{std::string(NotificationName::heightKey), height}});
}

// The tiles are measured anew every time the section opens, whichever of the two screens opened it.
void MainView::defaultsChanged() {
    redraw_.request();
    if (!shown_)
        return;
    const bool isExpanded = storedDefault(arrangeExpandedKey);
    if (!std::exchange(arrangeWasExpanded_, isExpanded) && isExpanded)
        arrange_->appear();
}

void MainView::grantScreenRecording() {
    services_.captures.requestScreenCapture();
    begin(state_->refresh());
}

void MainView::setStripEnabled(bool enabled) {
    stripEnabled_ = enabled;
    services_.strip.setEnabled(enabled);
    redraw_.request();
}

void MainView::setDefault(std::string_view key, bool value) {
    platform_.userDefaults.setBool(key, value);
    defaultsChanged();
}

void MainView::setShowStatusItem(bool shown) {
    setDefault(showStatusItemKey, shown);
    services_.notifications.post(NotificationName::orrivaneStatusItemChanged);
}

void MainView::moveSlider(double value) {
    if (!std::isnan(value))
        state_->setSliderValue(std::clamp(std::round(value), minimumSpacing, maximumSpacing));
}

void MainView::applySpacing() {
    SqueezeEngine::apply(state_->sliderSpacing(), shell_.globalPreferences);
    begin(state_->refresh());
}

void MainView::answerApply(bool apply) {
    showApplyConfirm_ = false;
    redraw_.request();
    if (apply)
        begin(state_->applySqueeze(true));
}

void MainView::answerReset(ResetAnswer answer) {
    showResetConfirm_ = false;
    redraw_.request();
    if (answer == ResetAnswer::cancel)
        return;
    SqueezeEngine::reset(shell_.globalPreferences);
    if (answer == ResetAnswer::resetAndRestart)
        SqueezeEngine::restartControlCenter(shell_.processLauncher);
    begin(state_->refresh());
}

void MainView::setLaunchAtLogin(bool enabled) {
    state_->setLaunchAtLogin(enabled);
    state_->toggleLogin();
}

bool MainView::storedDefault(std::string_view key) const {
    return platform_.userDefaults.boolForKey(key);
}

std::optional<NotchInfo> MainView::notch() const {
    return state_->census() ? state_->census()->notch : std::nullopt;
}

// Preferences can be edited by hand: the slider may start at a number that no spacing could be. To
// show one does no harm.
std::int64_t MainView::shownSpacing() const {
    const double value = state_->sliderValue();
    if (std::isfinite(value) && std::abs(value) >= 0x1p63)
        return value < 0 ? std::numeric_limits<std::int64_t>::min()
                         : std::numeric_limits<std::int64_t>::max();
    return state_->sliderSpacing();
}

int MainView::simulatedSpacing() const {
    constexpr std::int64_t least = std::numeric_limits<int>::min();
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(shownSpacing(), least, most));
}

} // namespace orrivane
