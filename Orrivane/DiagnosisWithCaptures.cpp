#include <Orrivane/DiagnosisWithCaptures.h>

#include <Orrivane/platform/Workspace.h>

#include <utility>

namespace orrivane {

DiagnosisWithCaptures::DiagnosisWithCaptures(const Platform& platform, Diagnosis diagnosis,
                                             std::function<void(const Diagnosis&)> done)
    : platform_(platform)
    , diagnosis_(std::move(diagnosis))
    , done_(std::move(done)) {}

void DiagnosisWithCaptures::applicationDidFinishLaunching() {
    start(platform_.mainLoop, capture());
}

Task<void> DiagnosisWithCaptures::capture() {
    diagnosis_.captures.emplace();
    // Without the permission the system would prompt.
    if (diagnosis_.screenCaptureGranted) {
        std::vector<std::uint32_t> windows;
        for (const auto& item : diagnosis_.items)
            windows.push_back(item.window.id);
        diagnosis_.captures =
            co_await CaptureProbes::take(platform_.screenCapture, std::move(windows));
    }
    done_(diagnosis_);
    platform_.workspace.terminate();
}

} // namespace orrivane
