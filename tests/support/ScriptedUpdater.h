#pragma once

#include <Orrivane/platform/Updater.h>
#include <Orrivane/support/ObserverList.h>
#include <tests/support/CallJournal.h>

#include <utility>

namespace orrivane {

class ScriptedUpdater : public Updater {
  public:
    explicit ScriptedUpdater(CallJournal calls = {})
        : journal(std::move(calls)) {}

    bool automaticChecks = true;

    UpdaterDelegate* delegate = nullptr; ///< for a test to call; null before `create`
    int creations = 0;
    int checks = 0;
    CallJournal journal;

    void setCanCheck(bool canCheck) {
        canCheck_ = canCheck;
        observers_.notify();
    }
    /// A scheduled check finds an update; the user looks at it and is done with it.
    void findScheduledUpdate(const std::string& displayVersion, bool inImmediateFocus = false) {
        const bool handled = !delegate->supportsGentleScheduledUpdateReminders() ||
                             delegate->shouldHandleShowingScheduledUpdate(inImmediateFocus);
        delegate->willHandleShowingUpdate(handled, displayVersion);
        delegate->didReceiveUserAttention();
        delegate->willFinishUpdateSession();
    }
    [[nodiscard]] std::size_t observerCount() const { return observers_.count(); }

    void create(UpdaterDelegate& updaterDelegate) override {
        journal.note("createUpdater");
        ++creations;
        delegate = &updaterDelegate;
    }
    void checkForUpdates() override {
        journal.note("checkForUpdates");
        ++checks;
    }
    bool canCheckForUpdates() override { return canCheck_; }
    Subscription observeCanCheck(std::function<void()> changed) override {
        changed();
        return observers_.add(std::move(changed));
    }
    bool automaticallyChecksForUpdates() override { return automaticChecks; }
    void setAutomaticallyChecksForUpdates(bool automatically) override {
        journal.note(automatically ? "setAutomaticChecks true" : "setAutomaticChecks false");
        automaticChecks = automatically;
    }

  private:
    bool canCheck_ = false;
    ObserverList<> observers_;
};

} // namespace orrivane
