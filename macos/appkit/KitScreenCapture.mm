#import <macos/appkit/KitScreenCapture.h>

#import <macos/appkit/Conversions.h>
#import <macos/appkit/MainThread.h>
#import <macos/view/ImageHandle.h>

#import <ScreenCaptureKit/ScreenCaptureKit.h>

#include <utility>

namespace orrivane {

namespace {

template <typename T>
using Completion = std::function<void(std::optional<T>)>;

template <typename T>
void answer(const std::shared_ptr<Completion<T>>& completion, std::optional<T> value) {
    onMainThread([completion, value = std::move(value)] {
        // Taken out: the framework may hold its handler, and with it the completion, for longer.
        if (const auto waiting = std::exchange(*completion, nullptr))
            waiting(value);
    });
}

std::optional<ShareableContent> convert(SCShareableContent* content) {
    if (content == nil)
        return std::nullopt;
    ShareableContent converted;
    for (SCWindow* window in content.windows)
        converted.windows.push_back({window.windowID,
                                     toRect(NSRectFromCGRect(window.frame)),
                                     {CFBridgingRetain(window), CFRelease}});
    return converted;
}

SCStreamConfiguration* convert(const CaptureConfiguration& configuration) {
    auto* converted = [[SCStreamConfiguration alloc] init];
    converted.width = static_cast<size_t>(configuration.width);
    converted.height = static_cast<size_t>(configuration.height);
    converted.showsCursor = configuration.showsCursor;
    converted.captureResolution =
        static_cast<SCCaptureResolutionType>(configuration.captureResolution);
    return converted;
}

} // namespace

void KitScreenCapture::shareableContent(
    std::function<void(std::optional<ShareableContent>)> completion) {
    const auto waiting = boundToMainThread(std::move(completion));
    [SCShareableContent
        getShareableContentExcludingDesktopWindows:NO
                               onScreenWindowsOnly:NO
                                 completionHandler:^(SCShareableContent* content, NSError*) {
                                   answer(waiting, convert(content));
                                 }];
}

void KitScreenCapture::captureImage(const ShareableWindow& window,
                                    const CaptureConfiguration& configuration,
                                    std::function<void(std::optional<Image>)> completion) {
    const auto waiting = boundToMainThread(std::move(completion));
    auto* captured = (__bridge SCWindow*)window.handle.get();
    if (captured == nil)
        return answer<Image>(waiting, std::nullopt);
    auto* filter = [[SCContentFilter alloc] initWithDesktopIndependentWindow:captured];
    [SCScreenshotManager captureImageWithFilter:filter
                                  configuration:convert(configuration)
                              completionHandler:^(CGImageRef image, NSError*) {
                                // Retained here: it is valid only during this call.
                                answer(waiting, imageFromCGImage(image));
                              }];
}

bool KitScreenCapture::preflightAccess() {
    return CGPreflightScreenCaptureAccess();
}

bool KitScreenCapture::requestAccess() {
    return CGRequestScreenCaptureAccess();
}

} // namespace orrivane
