#pragma once

#include <Orrivane/IconIdentity.h>
#include <Orrivane/StripWindow.h>
#include <Orrivane/WindowCensus.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/support/Subscription.h>
#include <Orrivane/support/Task.h>
#include <Orrivane/view/Image.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <vector>

namespace orrivane {

class CaptureService;

/// The main loop: a timer and a few system notifications schedule ticks, each tick takes a census
/// and shows what the notch hides. At most one tick is in flight; triggers that arrive meanwhile
/// are dropped. Everything runs on the main thread, and a tick suspends only to capture.
class StripController {
  public:
    /// Registers the defaults. `captures` and the ports outlive the controller.
    StripController(const Platform& platform, CaptureService& captures);
    StripController(const StripController&) = delete;
    StripController& operator=(const StripController&) = delete;
    ~StripController();

    /// The process-wide instance on the installed platform, created on first use.
    static StripController& shared();

    /// The stored switch of the tray.
    [[nodiscard]] bool enabled() const;
    void setEnabled(bool enabled);
    /// Starts the loop if the switch is on.
    void start();
    /// How many items the tray shows now; 0 whenever it is hidden.
    [[nodiscard]] std::int64_t mirroredCount() const { return mirroredCount_; }

    /// User default: whether the tray works while more than one screen is attached.
    static constexpr std::string_view externalKey = "OrrivaneMirrorOnExternal";
    /// User default: the tray's switch.
    static constexpr std::string_view enabledKey = "OrrivaneStripEnabled";

    /// The rightmost run of `eaten` (ascending left edges) that fits between the application menus
    /// and the notch, `menuMargin` clear of the menus and StripWindow::notchMargin of the notch.
    static std::vector<StatusItemWindow> fit(std::span<const StatusItemWindow> eaten,
                                             const NotchInfo& notch, double menuWidth);

    static constexpr double menuMargin = 10;       ///< points
    static constexpr double visibleInterval = 1.0; ///< seconds between ticks
    static constexpr double hiddenInterval = 2.0;  ///< seconds between ticks
    static constexpr double toleranceFraction = 0.3;
    static constexpr double menuWidthLifetime = 5.0; ///< seconds
    static constexpr double wakeDelay = 3.0;         ///< seconds

  private:
    void startLoop();
    void stopLoop();
    void installTimer(double interval);
    void scheduleTick();
    using WeakSelf = std::weak_ptr<StripController*>;
    /// `work` on the controller, unless that is gone when the loop comes to it.
    static Task<> onSelf(WeakSelf weak, Task<> (StripController::*work)());
    Task<> runTick();
    Task<> tick();
    Task<> resumeAfterWake();
    void clearCaches();
    void standDown();
    void applyIntervalRule();

    // The stretches of a tick, in their order.
    struct Plan;
    [[nodiscard]] bool mayMirror();
    [[nodiscard]] std::optional<Plan> plan();
    [[nodiscard]] std::vector<StatusItemWindow> withoutOwnWindows(std::vector<StatusItemWindow>);
    [[nodiscard]] std::optional<double> menuWidth();
    void refreshOwners(std::span<const StatusItemWindow> visible,
                       const std::set<std::uint32_t>& ids);
    [[nodiscard]] bool imagesAreDue(std::span<const std::uint32_t> ids) const;
    void forgetClosedMenu();
    [[nodiscard]] std::vector<StripItem> items(std::span<const StatusItemWindow> visible);
    void show(std::vector<StripItem> items, const NotchInfo& notch);

    using Press = bool (*)(const IconOwner&, Accessibility&, SystemLog&);
    [[nodiscard]] std::function<void()> pressAction(std::uint32_t id, const IconOwner& owner,
                                                    Press press);
    void pressItem(std::uint32_t id, const IconOwner& owner, Press press);

    void activated();
    void screensChanged();
    void fellAsleep();
    void wokeUp();
    /// `handler` on the controller if it still exists.
    [[nodiscard]] std::function<void()> weakly(void (StripController::*handler)());

    Platform platform_;
    CaptureService& captures_;

    Subscription timer_;
    double currentInterval_ = 0;
    Subscription workspaceObserver_;
    Subscription screenObserver_;
    std::vector<Subscription> sleepObservers_;
    bool tickInProgress_ = false;
    bool isSuspended_ = false;
    std::optional<double> cachedMenuWidth_;
    double menuWidthFetchedAt_ = 0;
    std::int64_t tickCount_ = 0;
    std::map<std::uint32_t, Image> cachedImages_;
    std::unique_ptr<StripWindow> stripWindow_;
    std::map<std::uint32_t, IconOwner> ownerByWindowID_;
    std::set<std::uint32_t> lastEatenIDs_;
    std::int64_t mirroredCount_ = 0;
    std::optional<std::uint32_t> openMenuWindowID_;

    // Last, so that weak references die before anything they could reach.
    std::shared_ptr<StripController*> self_;
};

} // namespace orrivane
