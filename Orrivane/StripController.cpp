#include <Orrivane/StripController.h>

#include <Orrivane/CaptureService.h>
#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/platform/UserDefaults.h>
#include <Orrivane/platform/Workspace.h>
#include <Orrivane/support/Awaiters.h>

namespace orrivane {

StripController::StripController(const Platform& platform, CaptureService& captures)
    : platform_(platform)
    , captures_(captures)
    , self_(std::make_shared<StripController*>(this)) {
    platform_.userDefaults.registerDefault(enabledKey, true);
    platform_.userDefaults.registerDefault(externalKey, true);
}

StripController::~StripController() = default;

StripController& StripController::shared() {
    static StripController controller(Platform::installed(), CaptureService::shared());
    return controller;
}

bool StripController::enabled() const {
    return platform_.userDefaults.boolForKey(enabledKey);
}

void StripController::setEnabled(bool enabled) {
    platform_.userDefaults.setBool(enabledKey, enabled);
    if (enabled) {
        startLoop();
        return;
    }
    stopLoop();
    standDown();
}

void StripController::start() {
    if (enabled())
        startLoop();
}

void StripController::startLoop() {
    if (timer_)
        return;
    installTimer(visibleInterval);
    auto& workspace = platform_.workspace;
    if (!workspaceObserver_)
        workspaceObserver_ = workspace.observe(SystemNotification::didActivateApplication,
                                               weakly(&StripController::activated));
    if (!screenObserver_)
        screenObserver_ = workspace.observe(SystemNotification::didChangeScreenParameters,
                                            weakly(&StripController::screensChanged));
    if (sleepObservers_.empty()) {
        const auto asleep = weakly(&StripController::fellAsleep);
        const auto awake = weakly(&StripController::wokeUp);
        for (const auto& [notification, handler] :
             {std::pair{SystemNotification::willSleep, asleep},
              std::pair{SystemNotification::screensDidSleep, asleep},
              std::pair{SystemNotification::didWake, awake},
              std::pair{SystemNotification::screensDidWake, awake}})
            sleepObservers_.push_back(workspace.observe(notification, handler));
    }
    scheduleTick();
}

void StripController::stopLoop() {
    timer_.reset();
    workspaceObserver_.reset();
    screenObserver_.reset();
    sleepObservers_.clear();
    isSuspended_ = false;
}

void StripController::installTimer(double interval) {
    timer_.reset();
    timer_ = platform_.mainLoop.repeatingTimer(interval, interval * toleranceFraction,
                                               weakly(&StripController::scheduleTick));
    currentInterval_ = interval;
}

void StripController::scheduleTick() {
    if (tickInProgress_)
        return;
    tickInProgress_ = true;
    orrivane::start(platform_.mainLoop, onSelf(self_, &StripController::runTick));
}

Task<> StripController::onSelf(WeakSelf weak, Task<> (StripController::*work)()) {
    if (weak.expired())
        co_return;
    // A lock held while the work waits would make a destroyed controller look alive.
    auto task = ((**weak.lock()).*work)();
    co_await std::move(task);
}

Task<> StripController::runTick() {
    const WeakSelf alive = self_;
    co_await tick();
    if (!alive.expired())
        tickInProgress_ = false;
}

Task<> StripController::resumeAfterWake() {
    if (!isSuspended_)
        co_return;
    const WeakSelf alive = self_;
    Sleep sleep(wakeDelay);
    const auto outcome = co_await sleep;
    if (alive.expired() || outcome == SleepOutcome::cancelled)
        co_return;
    if (!enabled() || !isSuspended_)
        co_return;
    isSuspended_ = false;
    if (!timer_)
        installTimer(visibleInterval);
    scheduleTick();
}

void StripController::clearCaches() {
    ownerByWindowID_.clear();
    lastEatenIDs_.clear();
    cachedImages_.clear();
    cachedMenuWidth_.reset();
    tickCount_ = 0;
}

void StripController::standDown() {
    mirroredCount_ = 0;
    if (stripWindow_ && stripWindow_->isVisible())
        stripWindow_->hide();
}

void StripController::applyIntervalRule() {
    if (!timer_)
        return;
    const bool shown = stripWindow_ && stripWindow_->isVisible();
    const double wanted = shown ? visibleInterval : hiddenInterval;
    if (wanted != currentInterval_)
        installTimer(wanted);
}

void StripController::activated() {
    cachedMenuWidth_.reset();
    scheduleTick();
}

void StripController::screensChanged() {
    captures_.invalidateWindowCache();
    clearCaches();
    scheduleTick();
}

void StripController::fellAsleep() {
    isSuspended_ = true;
    timer_.reset();
    currentInterval_ = 0;
    standDown();
    clearCaches();
    captures_.invalidateWindowCache();
}

void StripController::wokeUp() {
    orrivane::start(platform_.mainLoop, onSelf(self_, &StripController::resumeAfterWake));
}

std::function<void()> StripController::weakly(void (StripController::*handler)()) {
    return [weak = WeakSelf(self_), handler] {
        if (const auto controller = weak.lock())
            ((*controller)->*handler)();
    };
}

} // namespace orrivane
