#pragma once

#include <Orrivane/platform/Updater.h>
#include <Orrivane/support/Observable.h>
#include <Orrivane/support/Subscription.h>

#include <memory>
#include <optional>
#include <string>

namespace orrivane {

class MainLoop;
class NotificationCenter;
class Workspace;

/// The program's side of the updater: starts it, asks it for checks, and remembers the version of a
/// scheduled update that the updater leaves to the program to announce gently. Updates and their
/// errors are shown by the updater. Main thread only.
class UpdateController : public ObservableObject, public UpdaterDelegate {
  public:
    /// The ports and the centre outlive the controller, which lives as long as `updater` calls it.
    UpdateController(Updater& updater, Workspace& workspace, MainLoop& loop,
                     NotificationCenter& notifications);
    UpdateController(const UpdateController&) = delete;
    UpdateController& operator=(const UpdateController&) = delete;
    ~UpdateController() override;

    /// The process-wide instance on the installed platform, created on first use.
    static UpdateController& shared();

    /// Creates the updater unless that was done before.
    void start();
    /// A check the user asked for; creates the updater if need be.
    void checkForUpdates();

    /// The version users see of an update to announce; absent when there is none. A change posts
    /// `updateAvailabilityChanged` after it.
    [[nodiscard]] const std::optional<std::string>& availableVersion() const {
        return availableVersion_.get();
    }
    /// As the updater said last; false before `start`.
    [[nodiscard]] bool canCheckForUpdates() const { return canCheckForUpdates_.get(); }
    /// The updater's own stored setting; false before `start`.
    [[nodiscard]] bool automaticallyChecksForUpdates() const;
    /// Before `start` the value is lost, but observers hear of it and show what holds.
    void setAutomaticallyChecksForUpdates(bool automatically);

    bool supportsGentleScheduledUpdateReminders() override { return true; }
    bool shouldHandleShowingScheduledUpdate(bool inImmediateFocus) override;
    void willHandleShowingUpdate(bool handledByUpdater, const std::string& displayVersion) override;
    void didReceiveUserAttention() override;
    void willFinishUpdateSession() override;

  private:
    void createUpdater();
    void setAvailableVersion(std::optional<std::string> version);
    /// What the updater is told to call when it can or can no longer check.
    [[nodiscard]] std::function<void()> canCheckHandler();

    Updater& updater_;
    Workspace& workspace_;
    MainLoop& loop_;
    NotificationCenter& notifications_;

    Published<std::optional<std::string>> availableVersion_{*this, std::nullopt};
    Published<bool> canCheckForUpdates_{*this, false};
    bool created_ = false;
    Subscription canCheckObservation_;

    // Last, so that weak references die before anything they could reach.
    std::shared_ptr<UpdateController*> self_;
};

} // namespace orrivane
