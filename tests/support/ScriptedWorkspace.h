#pragma once

#include <Orrivane/platform/Workspace.h>
#include <Orrivane/support/ObserverList.h>
#include <tests/support/CallJournal.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {

/// The system's notifications are posted by hand, and delivered at once.
class ScriptedWorkspace : public Workspace {
  public:
    explicit ScriptedWorkspace(CallJournal calls = {})
        : journal(std::move(calls)) {}

    bool opens = true;
    VersionStrings versions{"1.2.0", "12"};

    std::vector<std::string> opened; ///< every address, in order
    std::optional<ActivationPolicy> activationPolicy;
    int terminations = 0;
    int activations = 0;
    CallJournal journal;

    void post(SystemNotification notification) { observers_[notification].notify(); }
    [[nodiscard]] std::size_t observerCount(SystemNotification notification) {
        return observers_[notification].count();
    }

    Subscription observe(SystemNotification notification, std::function<void()> notified) override {
        journal.note("observe " + std::to_string(static_cast<int>(notification)));
        return observers_[notification].add(std::move(notified));
    }
    bool open(std::string_view address) override {
        journal.note("open " + std::string(address));
        opened.emplace_back(address);
        return opens && address.find(':') != std::string_view::npos;
    }
    void setActivationPolicy(ActivationPolicy policy) override {
        journal.note("setActivationPolicy " + std::to_string(static_cast<int>(policy)));
        activationPolicy = policy;
    }
    void terminate() override {
        journal.note("terminate");
        ++terminations;
    }
    void activate() override {
        journal.note("activate");
        ++activations;
    }
    VersionStrings versionStrings() override { return versions; }

  private:
    std::map<SystemNotification, ObserverList<>> observers_;
};

} // namespace orrivane
