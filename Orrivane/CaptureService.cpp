#include <Orrivane/CaptureService.h>

#include <Orrivane/platform/Accessibility.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/Workspace.h>
#include <Orrivane/support/Awaiters.h>
#include <Orrivane/support/WhenAll.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace orrivane {

namespace {

constexpr std::string_view screenRecordingPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture";
constexpr std::string_view accessibilityPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

int pixels(double points) {
    constexpr double most = std::numeric_limits<int>::max();
    const double rounded = std::round(2 * points);
    // Written so that a length that is no number ends at the smallest image too.
    return rounded > 2 ? static_cast<int>(std::min(rounded, most)) : 2;
}

} // namespace

CaptureService& CaptureService::shared() {
    const auto& platform = Platform::installed();
    static CaptureService service(platform.screenCapture, platform.accessibility,
                                  platform.workspace);
    return service;
}

Task<CaptureService::Images> CaptureService::captureIcons(std::vector<std::uint32_t> ids) {
    if (!cachedContent_) {
        auto fetched = co_await fetch();
        cachedContent_ = fetched;
        if (!fetched)
            co_return Images{};
    }
    Lookup windows = lookUp(*cachedContent_);
    if (!ids.empty() && lacksAny(windows, ids)) {
        auto fetched = co_await fetch();
        if (fetched) {
            windows = lookUp(*fetched);
            cachedContent_ = std::move(fetched);
        }
    }

    Images images;
    std::vector<Task<bool>> captures;
    for (const auto id : ids)
        if (const auto found = windows.find(id); found != windows.end())
            captures.push_back(captureWindow(found->second, images));
    co_await whenAll(std::move(captures));
    co_return images;
}

Task<std::optional<ShareableContent>> CaptureService::fetch() {
    Answer<std::optional<ShareableContent>> answer(
        [this](Completion<std::optional<ShareableContent>> completion) {
            capture_.shareableContent(std::move(completion));
        },
        answerLimit);
    auto content = co_await answer;
    co_return content ? std::move(*content) : std::nullopt;
}

Task<bool> CaptureService::captureWindow(ShareableWindow window, Images& images) {
    const auto [width, height] = pixelSize({window.frame.width(), window.frame.height()});
    const CaptureConfiguration configuration{width, height, false, CaptureResolution::best};
    Answer<std::optional<Image>> answer(
        [this, &window, configuration](Completion<std::optional<Image>> completion) {
            capture_.captureImage(window, configuration, std::move(completion));
        },
        answerLimit);
    const auto image = co_await answer;
    if (!image || !*image)
        co_return false;
    images.insert_or_assign(window.windowID, **image);
    co_return true;
}

CaptureService::Lookup CaptureService::lookUp(const ShareableContent& content) {
    Lookup windows;
    for (const auto& window : content.windows)
        windows.emplace(window.windowID, window); // the first of a repeated number stays
    return windows;
}

bool CaptureService::lacksAny(const Lookup& windows, std::span<const std::uint32_t> ids) {
    return !std::ranges::all_of(ids, [&](auto id) { return windows.contains(id); });
}

bool CaptureService::screenCaptureGranted() {
    return capture_.preflightAccess();
}

bool CaptureService::requestScreenCapture() {
    return capture_.requestAccess();
}

bool CaptureService::accessibilityTrusted() {
    return accessibility_.isTrusted();
}

void CaptureService::openScreenRecordingSettings() {
    workspace_.open(screenRecordingPane);
}

void CaptureService::openAccessibilitySettings() {
    workspace_.open(accessibilityPane);
}

std::pair<int, int> CaptureService::pixelSize(const Size& points) {
    return {pixels(points.width), pixels(points.height)};
}

} // namespace orrivane
