#import <macos/appkit/AppKitOwnWindows.h>

#import <macos/appkit/AppKitMainWindow.h>

#import <AppKit/AppKit.h>

namespace orrivane {

std::vector<std::int64_t> AppKitOwnWindows::windowNumbers() {
    std::vector<std::int64_t> numbers;
    for (NSWindow* window in NSApp.windows)
        numbers.push_back(window.windowNumber);
    return numbers;
}

bool AppKitOwnWindows::mainViewWindowIsVisible() {
    for (NSWindow* window in NSApp.windows)
        if ([window isKindOfClass:ORVMainWindow.class] && window.visible)
            return true;
    return false;
}

} // namespace orrivane
