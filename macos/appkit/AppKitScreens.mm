#import <macos/appkit/AppKitScreens.h>

#import <macos/appkit/Conversions.h>

#import <AppKit/AppKit.h>

namespace orrivane {

namespace {

// A screen without such an area has an empty one; there is no nil for a rectangle.
std::optional<Rect> area(NSRect rect) {
    return NSIsEmptyRect(rect) ? std::nullopt : std::optional(toRect(rect));
}

ScreenDescription describe(NSScreen* screen) {
    return {toRect(screen.frame), screen.safeAreaInsets.top, area(screen.auxiliaryTopLeftArea),
            area(screen.auxiliaryTopRightArea)};
}

} // namespace

std::vector<ScreenDescription> AppKitScreens::screens() {
    std::vector<ScreenDescription> descriptions;
    for (NSScreen* screen in NSScreen.screens)
        descriptions.push_back(describe(screen));
    return descriptions;
}

std::optional<ScreenDescription> AppKitScreens::mainScreen() {
    NSScreen* screen = NSScreen.mainScreen;
    return screen != nil ? std::optional(describe(screen)) : std::nullopt;
}

Rect AppKitScreens::visibleFrame(const ScreenDescription& screen) {
    for (NSScreen* candidate in NSScreen.screens)
        if (describe(candidate) == screen)
            return toRect(candidate.visibleFrame);
    return screen.frame; // it has been detached since
}

bool AppKitScreens::mainDisplayIsAsleep() {
    return CGDisplayIsAsleep(CGMainDisplayID()) != 0;
}

} // namespace orrivane
