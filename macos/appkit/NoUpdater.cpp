#include <macos/appkit/MakeUpdater.h>

namespace orrivane {

namespace {

/// The updater of a build without an update framework: it exists and cannot check.
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

} // namespace

std::unique_ptr<Updater> makeUpdater(std::function<void()> /*willShowWindow*/) {
    return std::make_unique<NoUpdater>();
}

} // namespace orrivane
