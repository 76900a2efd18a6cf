#pragma once

#include <Orrivane/support/Subscription.h>

#include <functional>
#include <string>

namespace orrivane {

/// What the updater asks and tells; called on the main thread.
class UpdaterDelegate {
  public:
    virtual ~UpdaterDelegate() = default;

    [[nodiscard]] virtual bool supportsGentleScheduledUpdateReminders() = 0;
    /// Whether the updater itself shows a scheduled update that it has found.
    [[nodiscard]] virtual bool shouldHandleShowingScheduledUpdate(bool inImmediateFocus) = 0;
    virtual void willHandleShowingUpdate(bool handledByUpdater,
                                         const std::string& displayVersion) = 0;
    virtual void didReceiveUserAttention() = 0;
    virtual void willFinishUpdateSession() = 0;
};

/// The update framework. Without feed and key it exists and cannot check.
class Updater {
  public:
    virtual ~Updater() = default;

    /// Creates and starts the updater; called once, before everything below.
    virtual void create(UpdaterDelegate& delegate) = 0;
    /// A check the user asked for, with everything shown.
    virtual void checkForUpdates() = 0;
    [[nodiscard]] virtual bool canCheckForUpdates() = 0;
    /// Called on the main thread, at first with what holds now, then after every change.
    virtual Subscription observeCanCheck(std::function<void()> changed) = 0;
    [[nodiscard]] virtual bool automaticallyChecksForUpdates() = 0;
    virtual void setAutomaticallyChecksForUpdates(bool automatically) = 0;
};

} // namespace orrivane
