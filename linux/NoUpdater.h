#pragma once

#include <Orrivane/platform/Updater.h>

namespace orrivane {

/// The updater of a build without a feed: it exists and cannot check.
class NoUpdater : public Updater {
  public:
    void create(UpdaterDelegate&) override {}
    void checkForUpdates() override {}
    bool canCheckForUpdates() override { return false; }
    Subscription observeCanCheck(std::function<void()> changed) override {
        changed();
        return {};
    }
    bool automaticallyChecksForUpdates() override { return false; }
    void setAutomaticallyChecksForUpdates(bool) override {}
};

} // namespace orrivane
