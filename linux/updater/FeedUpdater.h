#pragma once

#include <Orrivane/platform/Updater.h>
#include <Orrivane/support/ObserverList.h>
#include <linux/updater/ReleaseSource.h>
#include <linux/updater/UpdatePage.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orrivane {

class MainLoop;
class SystemLog;
class UpdateMemory;

/// Updates from a signed release feed. A session begins with a check and ends when the user has
/// made a choice or there is nothing to choose. One session at a time. Main thread only.
class FeedUpdater : public Updater {
  public:
    /// Hands a verified package to the desktop's installer; false when there is none.
    using OpenPackage = std::function<bool(const std::string& path)>;

    struct Services {
        MainLoop& loop;
        ReleaseSource& source;
        UpdatePresenter& presenter;
        UpdateMemory& memory;
        SystemLog& log;
    };

    /// The services outlive it.
    FeedUpdater(Services services, std::string runningVersion, OpenPackage openPackage);
    ~FeedUpdater() override;

    void create(UpdaterDelegate& delegate) override;
    void checkForUpdates() override;
    bool canCheckForUpdates() override;
    Subscription observeCanCheck(std::function<void()> changed) override;
    bool automaticallyChecksForUpdates() override;
    void setAutomaticallyChecksForUpdates(bool automatically) override;

    static constexpr double checkInterval = 24 * 60 * 60; ///< seconds
    /// Seconds between two looks at the clock: a timer of a whole day would not count the hours
    /// that the machine slept.
    static constexpr double lookInterval = 60 * 60;
    static constexpr double lookTolerance = 5 * 60;
    static constexpr double firstLook = 10; ///< seconds after the start

    /// Whether a check is due; both times in seconds since 1970. A check in the future was made
    /// before the clock was set and does not count.
    static bool isDue(double lastCheck, double now) {
        return lastCheck > now || now - lastCheck >= checkInterval;
    }

  private:
    enum class Phase {
        idle,
        checkingQuietly, ///< by the schedule
        checking,        ///< the user looks on
        announced,       ///< an update was found; the program announces it
        offered,         ///< the user sees the update
        downloading,
        closing, ///< the last page is open
    };

    void setPhase(Phase phase);
    void look();
    void schedule();
    void checkQuietly();
    void checkVisibly();
    void answered(ReleaseChoice choice);
    void answeredQuietly(ReleaseChoice choice);
    void showOffer();
    void receiveAttention();
    void chosen(UpdateChoice choice);
    void download();
    void downloaded(const PackageResult& result);
    void showLast(const UpdatePage& page);
    void endSession();

    Services services_;
    std::string running_;
    OpenPackage openPackage_;
    UpdaterDelegate* delegate_ = nullptr;
    Phase phase_ = Phase::idle;
    std::optional<ReleaseOffer> offer_;
    bool attended_ = false; ///< the user has seen the offer in this session
    ObserverList<> observers_;
    Subscription firstLook_;
    Subscription looks_;
    std::unique_ptr<UpdateOperation> operation_;
};

} // namespace orrivane
