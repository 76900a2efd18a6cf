#include <linux/updater/FeedUpdater.h>

#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/platform/SystemLog.h>
#include <linux/updater/UpdateMemory.h>
#include <linux/updater/UpdatePages.h>

#include <utility>

namespace orrivane {

FeedUpdater::FeedUpdater(Services services, std::string runningVersion, OpenPackage openPackage)
    : services_(services)
    , running_(std::move(runningVersion))
    , openPackage_(std::move(openPackage)) {}

FeedUpdater::~FeedUpdater() = default;

void FeedUpdater::create(UpdaterDelegate& delegate) {
    delegate_ = &delegate;
    schedule();
    observers_.notify();
}

bool FeedUpdater::canCheckForUpdates() {
    const bool isBusy = phase_ == Phase::checking || phase_ == Phase::downloading;
    return delegate_ && services_.source.isUsable() && !isBusy;
}

Subscription FeedUpdater::observeCanCheck(std::function<void()> changed) {
    changed();
    return observers_.add(std::move(changed));
}

bool FeedUpdater::automaticallyChecksForUpdates() {
    return services_.source.isUsable() && services_.memory.checksAutomatically();
}

void FeedUpdater::setAutomaticallyChecksForUpdates(bool automatically) {
    services_.memory.setChecksAutomatically(automatically);
    schedule();
}

void FeedUpdater::checkForUpdates() {
    if (!canCheckForUpdates())
        return;
    switch (phase_) {
    case Phase::announced:
        showOffer();
        receiveAttention();
        break;
    case Phase::offered:
    case Phase::closing:
        services_.presenter.bringForward();
        break;
    default:
        checkVisibly();
    }
}

void FeedUpdater::setPhase(Phase phase) {
    const bool before = canCheckForUpdates();
    phase_ = phase;
    if (canCheckForUpdates() != before)
        observers_.notify();
}

void FeedUpdater::schedule() {
    firstLook_.reset();
    looks_.reset();
    if (!delegate_ || !automaticallyChecksForUpdates())
        return;
    firstLook_ = services_.loop.wakeUp(firstLook, [this] { look(); });
    looks_ = services_.loop.repeatingTimer(lookInterval, lookTolerance, [this] { look(); });
}

void FeedUpdater::look() {
    const bool isFree = phase_ == Phase::idle || phase_ == Phase::announced;
    if (isFree && isDue(services_.memory.lastCheck(), services_.loop.now()))
        checkQuietly();
}

void FeedUpdater::checkQuietly() {
    // An update that was announced stays announced until there is another answer.
    if (phase_ == Phase::idle)
        setPhase(Phase::checkingQuietly);
    operation_ =
        services_.source.check(services_.memory.skippedVersion(), [this](ReleaseChoice choice) {
            operation_.reset();
            answeredQuietly(std::move(choice));
        });
}

void FeedUpdater::checkVisibly() {
    operation_.reset();
    setPhase(Phase::checking);
    services_.presenter.present(updatePages::checking(),
                                [this](UpdateChoice choice) { chosen(choice); });
    // Who asks wants to see also what was skipped once.
    operation_ = services_.source.check({}, [this](ReleaseChoice choice) {
        operation_.reset();
        answered(std::move(choice));
    });
}

void FeedUpdater::answered(ReleaseChoice choice) {
    if (choice.problem) {
        showLast(updatePages::failed(*choice.problem));
        return;
    }
    services_.memory.setLastCheck(services_.loop.now());
    if (!choice.offer) {
        showLast(updatePages::newest(running_));
        return;
    }
    offer_ = std::move(choice.offer);
    delegate_->willHandleShowingUpdate(true, offer_->entry.displayVersion());
    showOffer();
}

void FeedUpdater::answeredQuietly(ReleaseChoice choice) {
    if (choice.problem) {
        services_.log.write("Orrivane: no update could be looked for: " + *choice.problem);
        if (phase_ == Phase::checkingQuietly)
            setPhase(Phase::idle);
        return;
    }
    services_.memory.setLastCheck(services_.loop.now());
    if (!choice.offer) {
        endSession();
        return;
    }
    offer_ = std::move(choice.offer);
    const bool handled =
        !delegate_->supportsGentleScheduledUpdateReminders() ||
        delegate_->shouldHandleShowingScheduledUpdate(services_.presenter.hasFocus());
    delegate_->willHandleShowingUpdate(handled, offer_->entry.displayVersion());
    if (handled)
        showOffer();
    else
        setPhase(Phase::announced);
}

void FeedUpdater::showOffer() {
    operation_.reset();
    setPhase(Phase::offered);
    services_.presenter.present(updatePages::offer(*offer_, running_),
                                [this](UpdateChoice choice) { chosen(choice); });
}

void FeedUpdater::receiveAttention() {
    if (!std::exchange(attended_, true))
        delegate_->didReceiveUserAttention();
}

void FeedUpdater::chosen(UpdateChoice choice) {
    const bool hadOffer = phase_ == Phase::offered;
    if (hadOffer)
        receiveAttention();
    if (hadOffer && choice == UpdateChoice::install) {
        download();
        return;
    }
    if (hadOffer && choice == UpdateChoice::skip)
        services_.memory.setSkippedVersion(offer_->entry.version);
    services_.presenter.dismiss();
    endSession();
}

void FeedUpdater::download() {
    setPhase(Phase::downloading);
    services_.presenter.present(updatePages::downloading(*offer_),
                                [this](UpdateChoice choice) { chosen(choice); });
    operation_ = services_.source.download(
        *offer_, [this](double part) { services_.presenter.setProgress(part); },
        [this](const PackageResult& result) {
            operation_.reset();
            downloaded(result);
        });
}

void FeedUpdater::downloaded(const PackageResult& result) {
    if (result.problem) {
        showLast(updatePages::failed(*result.problem));
        return;
    }
    const bool opened = openPackage_(result.path);
    showLast(updatePages::handedOver(*offer_, result.path, opened));
}

void FeedUpdater::showLast(const UpdatePage& page) {
    setPhase(Phase::closing);
    services_.presenter.present(page, [this](UpdateChoice choice) { chosen(choice); });
}

void FeedUpdater::endSession() {
    operation_.reset();
    offer_.reset();
    attended_ = false;
    setPhase(Phase::idle);
    delegate_->willFinishUpdateSession();
}

} // namespace orrivane
