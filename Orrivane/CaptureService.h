#pragma once

#include <Orrivane/platform/ScreenCapture.h>
#include <Orrivane/support/Task.h>

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace orrivane {

class Accessibility;
class Workspace;

/// Pictures of status-item windows, and the permission questions every screen asks. Its one piece
/// of state is the last snapshot of shareable windows. Main thread only; nothing is reported.
class CaptureService {
  public:
    using Images = std::map<std::uint32_t, Image>;

    CaptureService(ScreenCapture& capture, Accessibility& accessibility, Workspace& workspace)
        : capture_(capture)
        , accessibility_(accessibility)
        , workspace_(workspace) {}
    CaptureService(const CaptureService&) = delete;
    CaptureService& operator=(const CaptureService&) = delete;

    /// The process-wide instance on the installed platform, created on first use.
    static CaptureService& shared();

    /// One image for each window that could be captured; the rest have no entry. Captures run side
    /// by side, and one that does not answer within `answerLimit` ends without an image.
    Task<Images> captureIcons(std::vector<std::uint32_t> ids);
    /// Forgets the snapshot; for when the set of windows may have changed.
    void invalidateWindowCache() { cachedContent_.reset(); }

    [[nodiscard]] bool screenCaptureGranted();
    /// Lets the system ask the user; true if the permission is there already.
    bool requestScreenCapture();
    [[nodiscard]] bool accessibilityTrusted();
    void openScreenRecordingSettings();
    void openAccessibilitySettings();

    /// Pixels of an image of a window of this size: twice the points, whatever the display's
    /// scale, halves rounded away from zero, never below 2.
    static std::pair<int, int> pixelSize(const Size& points);

    /// Seconds after which a capture or a snapshot that never answers is given up.
    static constexpr double answerLimit = 2.0;

  private:
    using Lookup = std::map<std::uint32_t, ShareableWindow>;

    Task<std::optional<ShareableContent>> fetch();
    /// Puts the window's image into `images` when it comes; true if one came.
    Task<bool> captureWindow(ShareableWindow window, Images& images);
    static Lookup lookUp(const ShareableContent& content);
    static bool lacksAny(const Lookup& windows, std::span<const std::uint32_t> ids);

    ScreenCapture& capture_;
    Accessibility& accessibility_;
    Workspace& workspace_;
    std::optional<ShareableContent> cachedContent_;
};

} // namespace orrivane
