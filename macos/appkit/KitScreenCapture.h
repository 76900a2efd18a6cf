#pragma once

#include <Orrivane/platform/ScreenCapture.h>

namespace orrivane {

/// ScreenCaptureKit. Its answers come on a thread of its own and are brought to the main one;
/// whether they come at all is for the caller to watch.
class KitScreenCapture : public ScreenCapture {
  public:
    void shareableContent(std::function<void(std::optional<ShareableContent>)> completion) override;
    void captureImage(const ShareableWindow& window, const CaptureConfiguration& configuration,
                      std::function<void(std::optional<Image>)> completion) override;
    /// Answered once for the process: what the user grants later is seen after a restart.
    [[nodiscard]] bool preflightAccess() override;
    [[nodiscard]] bool requestAccess() override;
};

} // namespace orrivane
