#pragma once

#include <Orrivane/CaptureService.h>
#include <Orrivane/MenuBarPreview.h>
#include <Orrivane/SqueezeEngine.h>
#include <Orrivane/WindowCensus.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ShellPlatform.h>
#include <Orrivane/support/Observable.h>
#include <Orrivane/support/Task.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace orrivane {

/// The observable model behind one main view. Every assignment of a field is announced before it
/// happens. Main thread only. A task that an operation returns keeps the state alive until it has
/// run to its end; whoever starts one need not outlive it.
class AppState : public ObservableObject, public std::enable_shared_from_this<AppState> {
  public:
    /// Reads the stored spacing, the screen-recording permission and the login item, once each and
    /// in this order; nothing prompts. The ports and `captures` outlive the state.
    static std::shared_ptr<AppState> create(const Platform& platform, const ShellPlatform& shell,
                                            CaptureService& captures);

    /// The census of the last refresh; absent before the first.
    [[nodiscard]] const std::optional<CensusResult>& census() const { return census_.get(); }
    /// By window number. During a refresh they may be older than the census.
    [[nodiscard]] const CaptureService::Images& images() const { return images_.get(); }
    /// What is stored, as of the last refresh.
    [[nodiscard]] const SqueezeState& squeeze() const { return squeeze_.get(); }
    [[nodiscard]] bool screenGranted() const { return screenGranted_.get(); }
    [[nodiscard]] bool isRefreshing() const { return isRefreshing_.get(); }

    /// Where the spacing slider stands. Refreshes leave it alone.
    [[nodiscard]] double sliderValue() const { return sliderValue_.get(); }
    void setSliderValue(double value) { sliderValue_ = value; }
    /// The slider's spacing in the system's units, cut towards zero. A value that is no 64-bit
    /// integer is a programming error and ends the program.
    [[nodiscard]] std::int64_t sliderSpacing() const;

    /// The switch as it is shown, whatever became of the registration.
    [[nodiscard]] bool launchAtLogin() const { return launchAtLogin_.get(); }
    void setLaunchAtLogin(bool enabled) { launchAtLogin_ = enabled; }
    /// Applies the switch as it stands.
    void toggleLogin();

    /// One icon for every item of the census, in its order, with its image if there is one; made
    /// anew on every call.
    [[nodiscard]] std::vector<PreviewIcon> previewIcons() const;

    /// Takes a census and reads the stored spacing; captures images only if some frame changed or
    /// there are none. Two refreshes may overlap: the one that ends later leaves its values, and
    /// `isRefreshing` is false from the end of the first.
    Task<> refresh();
    /// Stores the slider's spacing and refreshes, after a restart of the menu bar if asked to.
    Task<> applySqueeze(bool restart);
    /// As above, but removes the stored spacing.
    Task<> resetSqueeze(bool restart);

    using Signature = std::map<std::uint32_t, Rect>;
    /// The frame of every item by window number: what has to change for a new capture. A repeated
    /// number is a programming error and ends the program.
    static Signature captureSignature(const CensusResult& census);

    static constexpr double restartPause = 1.5; ///< seconds that the menu bar gets to come back

  private:
    using Self = std::shared_ptr<AppState>;

    AppState(const Platform& platform, const ShellPlatform& shell, CaptureService& captures);

    // Tasks are lazy: `self` is what keeps the state alive before the first step, too.
    static Task<> runRefresh(Self self);
    static Task<> runApply(Self self, bool restart);
    static Task<> runReset(Self self, bool restart);
    static Task<> restartMenuBar(Self self);

    Platform platform_;
    ShellPlatform shell_;
    CaptureService& captures_;

    // In the order in which they are first read.
    Published<std::optional<CensusResult>> census_;
    Published<CaptureService::Images> images_;
    Published<bool> isRefreshing_;
    Signature lastCaptureSignature_;
    Published<SqueezeState> squeeze_;
    Published<double> sliderValue_;
    Published<bool> screenGranted_;
    Published<bool> launchAtLogin_;
};

} // namespace orrivane
