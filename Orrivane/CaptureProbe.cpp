#include <Orrivane/CaptureProbe.h>

#include <Orrivane/CaptureService.h>
#include <Orrivane/platform/ScreenCapture.h>
#include <Orrivane/support/Awaiters.h>

#include <algorithm>

namespace orrivane {

namespace {

Task<std::optional<ShareableContent>> snapshot(ScreenCapture& capture) {
    Answer<std::optional<ShareableContent>> answer(
        [&capture](Completion<std::optional<ShareableContent>> completion) {
            capture.shareableContent(std::move(completion));
        },
        CaptureService::answerLimit);
    auto content = co_await answer;
    co_return content ? std::move(*content) : std::nullopt;
}

Task<std::optional<CaptureProbe::Picture>> pictureOf(ScreenCapture& capture,
                                                     const ShareableWindow& window) {
    const auto [width, height] =
        CaptureService::pixelSize({window.frame.width(), window.frame.height()});
    const CaptureConfiguration configuration{width, height, false, CaptureResolution::best};
    Answer<std::optional<Image>> answer(
        [&, configuration](Completion<std::optional<Image>> completion) {
            capture.captureImage(window, configuration, std::move(completion));
        },
        CaptureService::answerLimit);
    const auto image = co_await answer;
    if (!image || !*image)
        co_return std::nullopt;
    co_return CaptureProbe::Picture{(*image)->pixelWidth(), (*image)->pixelHeight(),
                                    (*image)->body().isClear()};
}

} // namespace

Task<CaptureProbes> CaptureProbes::take(ScreenCapture& capture,
                                        std::vector<std::uint32_t> windows) {
    CaptureProbes probes;
    const auto content = co_await snapshot(capture);
    if (!content)
        co_return probes;
    probes.snapshotSize = content->windows.size();
    for (const auto id : windows) {
        CaptureProbe probe{.window = id, .isInSnapshot = false, .picture = std::nullopt};
        const auto found = std::ranges::find(content->windows, id, &ShareableWindow::windowID);
        probe.isInSnapshot = found != content->windows.end();
        if (probe.isInSnapshot)
            probe.picture = co_await pictureOf(capture, *found);
        probes.windows.push_back(probe);
    }
    co_return probes;
}

} // namespace orrivane
