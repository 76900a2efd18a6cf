#pragma once

#include <Orrivane/support/Geometry.h>
#include <Orrivane/view/Image.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orrivane {

/// One window of a snapshot. `handle` is the platform's own object and keeps it alive.
struct ShareableWindow {
    std::uint32_t windowID = 0;
    Rect frame; ///< points, global
    std::shared_ptr<const void> handle;
};

/// The windows that could be captured when the snapshot was taken.
struct ShareableContent {
    std::vector<ShareableWindow> windows;
};

enum class CaptureResolution { automatic = 0, best = 1 };

struct CaptureConfiguration {
    int width = 0;  ///< pixels of the image
    int height = 0; ///< pixels of the image
    bool showsCursor = false;
    CaptureResolution captureResolution = CaptureResolution::best;

    friend bool operator==(const CaptureConfiguration&, const CaptureConfiguration&) = default;
};

/// Pictures of single windows, and the permission to take them. Completions run on the main thread,
/// once, or are destroyed uncalled; they may also never come.
class ScreenCapture {
  public:
    virtual ~ScreenCapture() = default;

    /// Every window, desktop windows and off-screen windows included; absent on any error.
    virtual void
    shareableContent(std::function<void(std::optional<ShareableContent>)> completion) = 0;

    /// One still image of exactly this window, whatever lies over or behind it; absent on any
    /// error.
    virtual void captureImage(const ShareableWindow& window,
                              const CaptureConfiguration& configuration,
                              std::function<void(std::optional<Image>)> completion) = 0;

    /// Whether capturing is permitted; never prompts.
    [[nodiscard]] virtual bool preflightAccess() = 0;
    /// As above, but may show the system's prompt once.
    [[nodiscard]] virtual bool requestAccess() = 0;
};

} // namespace orrivane
