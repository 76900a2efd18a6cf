#pragma once

#include <Orrivane/AppState.h>
#include <Orrivane/ArrangeView.h>
#include <Orrivane/WindowCensus.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ShellPlatform.h>
#include <Orrivane/support/OncePerTurn.h>
#include <Orrivane/support/Subscription.h>
#include <Orrivane/support/Task.h>
#include <Orrivane/view/View.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane {

class CaptureService;
class NotificationCenter;
class StripController;
class UpdateController;

/// A line of text beside a symbol, both in one colour.
struct DiagnosticRow {
    std::string text; ///< UTF-8
    SymbolName symbol;
    ColorRole color = ColorRole::secondary;

    friend bool operator==(const DiagnosticRow&, const DiagnosticRow&) = default;
};

/// What the notch hides and how much of it the strip shows, in one or two rows.
struct DiagnosticLine {
    std::vector<DiagnosticRow> rows;

    friend bool operator==(const DiagnosticLine&, const DiagnosticLine&) = default;
};

/// The settings and diagnostics screen. It decides nothing itself: every action calls a service or
/// posts a notification. Main thread only.
class MainView : public std::enable_shared_from_this<MainView> {
  public:
    /// All of them outlive the view and every task it began.
    struct Services {
        CaptureService& captures;
        StripController& strip;
        UpdateController& updates;
        NotificationCenter& notifications;
        ItemMover mover;
        /// One sentence where the menu bar's spacing cannot be changed; empty, or absent, where it
        /// can.
        std::function<std::string()> squeezeLimitation = {};
    };
    using SetRoot = std::function<void(const View&)>;

    /// `setRoot` is called before this returns, and then on the turn of the loop after something
    /// shown has changed, as long as the view lives. Tasks that a button began outlive it.
    static std::shared_ptr<MainView> create(bool inWindow, const Platform& platform,
                                            const ShellPlatform& shell, const Services& services,
                                            SetRoot setRoot);
    MainView(const MainView&) = delete;
    MainView& operator=(const MainView&) = delete;
    ~MainView();

    [[nodiscard]] View body();
    [[nodiscard]] AppState& state() { return *state_; }
    [[nodiscard]] ArrangeView& arrangeView() { return *arrange_; }

    /// `mirroredCount` is what the strip reports; it may come from a newer look at the menu bar
    /// than `census`, so more than the eaten items counts as all of them.
    static DiagnosticLine diagnosticLine(const std::optional<CensusResult>& census,
                                         int mirroredCount);

    /// What a spacing would do, from the number of icons the notch would then hide. UTF-8.
    static std::string projectedVerdict(int projectedEatenCount);

    // User defaults of this screen.
    static constexpr std::string_view arrangeExpandedKey = "OrrivaneArrangeExpanded";
    static constexpr std::string_view showStatusItemKey = "OrrivaneShowStatusItem";
    static constexpr std::string_view squeezeShownKey = "OrrivaneSqueezeShown";

    static constexpr double refreshInterval = 2.0; ///< seconds
    static constexpr double minimumSpacing = 4;
    static constexpr double maximumSpacing = 16;

  private:
    MainView(bool inWindow, const Platform& platform, const ShellPlatform& shell,
             const Services& services, SetRoot setRoot);
    void observe();
    void render();
    void begin(Task<> task);

    // While shown.
    void appear();
    void disappear();
    static Task<> refreshCycle(std::weak_ptr<MainView> view, std::weak_ptr<int> shown);
    static Task<> refreshOnce(std::shared_ptr<MainView> view);
    void contentHeightChanged(double height);
    void defaultsChanged();

    // What the user does.
    void grantScreenRecording();
    void setStripEnabled(bool enabled);
    void setDefault(std::string_view key, bool value);
    void setShowStatusItem(bool shown);
    void moveSlider(double value);
    void applySpacing();
    void answerApply(bool apply);
    enum class ResetAnswer { cancel, reset, resetAndRestart };
    void answerReset(ResetAnswer answer);
    void setLaunchAtLogin(bool enabled);

    // The screen, top to bottom.
    [[nodiscard]] View header();
    [[nodiscard]] View permissionBanner();
    [[nodiscard]] View nowSection() const;
    [[nodiscard]] View previewSection() const;
    [[nodiscard]] View stripSection();
    [[nodiscard]] View arrangeSection();
    [[nodiscard]] View squeezeSection();
    [[nodiscard]] View squeezeControls();
    [[nodiscard]] View updatesRow();
    [[nodiscard]] View footer();
    [[nodiscard]] View applyDialog();
    [[nodiscard]] View resetDialog();

    [[nodiscard]] bool storedDefault(std::string_view key) const;
    [[nodiscard]] std::optional<NotchInfo> notch() const;
    [[nodiscard]] std::int64_t shownSpacing() const;
    [[nodiscard]] int simulatedSpacing() const;
    template <typename Work>
    [[nodiscard]] auto action(Work work) {
        return weakly(weak_from_this(), std::move(work));
    }

    const bool inWindow_;
    Platform platform_;
    ShellPlatform shell_;
    Services services_;
    std::shared_ptr<AppState> state_;
    std::shared_ptr<ArrangeView> arrange_;
    SetRoot setRoot_;

    bool showApplyConfirm_ = false;
    bool showResetConfirm_ = false;
    bool stripEnabled_ = false;
    bool accessibilityTrusted_ = true;
    bool arrangeWasExpanded_ = false; // as last seen, while shown
    std::string squeezeLimitation_;
    std::optional<double> contentHeight_; // as last posted

    std::shared_ptr<int> shown_; // null while not shown; the running cycle watches it
    TaskHandle cycle_;
    OncePerTurn redraw_;
    std::vector<Subscription> observations_;
};

} // namespace orrivane
