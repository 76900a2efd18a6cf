#include <Orrivane/UpdateController.h>

#include <Orrivane/NotificationName.h>
#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ShellPlatform.h>
#include <Orrivane/platform/Workspace.h>
#include <Orrivane/support/NotificationCenter.h>

#include <utility>

namespace orrivane {

UpdateController::UpdateController(Updater& updater, Workspace& workspace, MainLoop& loop,
                                   NotificationCenter& notifications)
    : updater_(updater)
    , workspace_(workspace)
    , loop_(loop)
    , notifications_(notifications)
    , self_(std::make_shared<UpdateController*>(this)) {}

UpdateController::~UpdateController() = default;

UpdateController& UpdateController::shared() {
    const auto& platform = Platform::installed();
    static UpdateController controller(ShellPlatform::installed().updater, platform.workspace,
                                       platform.mainLoop, NotificationCenter::defaultCenter());
    return controller;
}

void UpdateController::start() {
    createUpdater();
}

void UpdateController::checkForUpdates() {
    createUpdater();
    workspace_.activate();
    updater_.checkForUpdates();
}

void UpdateController::createUpdater() {
    if (created_)
        return;
    created_ = true;
    updater_.create(*this);
    canCheckObservation_ = updater_.observeCanCheck(canCheckHandler());
}

std::function<void()> UpdateController::canCheckHandler() {
    // The port may call in the middle of a change of its own, so the field follows on a later turn.
    return [weak = std::weak_ptr(self_), &updater = updater_, &loop = loop_] {
        loop.post([weak, canCheck = updater.canCheckForUpdates()] {
            if (const auto controller = weak.lock())
                (*controller)->canCheckForUpdates_ = canCheck;
        });
    };
}

bool UpdateController::automaticallyChecksForUpdates() const {
    return created_ && updater_.automaticallyChecksForUpdates();
}

void UpdateController::setAutomaticallyChecksForUpdates(bool automatically) {
    announceChange();
    if (created_)
        updater_.setAutomaticallyChecksForUpdates(automatically);
}

bool UpdateController::shouldHandleShowingScheduledUpdate(bool inImmediateFocus) {
    return inImmediateFocus;
}

void UpdateController::willHandleShowingUpdate(bool handledByUpdater,
                                               const std::string& displayVersion) {
    if (!handledByUpdater)
        setAvailableVersion(displayVersion);
}

void UpdateController::didReceiveUserAttention() {
    setAvailableVersion(std::nullopt);
}

void UpdateController::willFinishUpdateSession() {
    setAvailableVersion(std::nullopt);
}

void UpdateController::setAvailableVersion(std::optional<std::string> version) {
    const auto old = availableVersion_.get();
    availableVersion_ = std::move(version);
    if (availableVersion_.get() != old)
        notifications_.post(NotificationName::updateAvailabilityChanged, {}, this);
}

} // namespace orrivane
