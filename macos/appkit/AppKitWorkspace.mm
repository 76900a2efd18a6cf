#import <macos/appkit/AppKitWorkspace.h>

#import <macos/appkit/Conversions.h>
#import <macos/appkit/MainThread.h>
#import <macos/appkit/Observation.h>

#include <Orrivane/CommandLine.h>

#import <AppKit/AppKit.h>

namespace orrivane {

namespace {

struct Source {
    NSNotificationCenter* center;
    NSNotificationName name;
};

// The workspace's notifications never reach the default centre.
Source source(SystemNotification notification) {
    auto* center = NSWorkspace.sharedWorkspace.notificationCenter;
    switch (notification) {
    case SystemNotification::didActivateApplication:
        return {center, NSWorkspaceDidActivateApplicationNotification};
    case SystemNotification::willSleep:
        return {center, NSWorkspaceWillSleepNotification};
    case SystemNotification::screensDidSleep:
        return {center, NSWorkspaceScreensDidSleepNotification};
    case SystemNotification::didWake:
        return {center, NSWorkspaceDidWakeNotification};
    case SystemNotification::screensDidWake:
        return {center, NSWorkspaceScreensDidWakeNotification};
    case SystemNotification::didChangeScreenParameters:
        break;
    }
    return {NSNotificationCenter.defaultCenter, NSApplicationDidChangeScreenParametersNotification};
}

std::string bundleString(NSString* key) {
    const id value = [NSBundle.mainBundle objectForInfoDictionaryKey:key];
    if ([value isKindOfClass:NSString.class] && [value length] != 0)
        return toString(value);
    return std::string(CommandLine::version());
}

} // namespace

Subscription AppKitWorkspace::observe(SystemNotification notification,
                                      std::function<void()> notified) {
    const auto [center, name] = source(notification);
    return observeNotification(center, name, std::move(notified));
}

bool AppKitWorkspace::open(std::string_view address) {
    // Otherwise the system would encode what is no address until it is one.
    NSURL* url = [NSURL URLWithString:toNSString(address) encodingInvalidCharacters:NO];
    return url.scheme.length != 0 && [NSWorkspace.sharedWorkspace openURL:url];
}

void AppKitWorkspace::setActivationPolicy(ActivationPolicy policy) {
    [NSApp setActivationPolicy:static_cast<NSApplicationActivationPolicy>(policy)];
}

void AppKitWorkspace::terminate() {
    onMainThread([] {
        for (NSWindow* window in NSApp.windows)
            window.preventsApplicationTerminationWhenModal = NO;
        [NSApp terminate:nil];
    });
}

void AppKitWorkspace::activate() {
    // The newer call is a mere request, which the system may decline without a word.
    [NSApp activateIgnoringOtherApps:YES];
}

VersionStrings AppKitWorkspace::versionStrings() {
    return {bundleString(@"CFBundleShortVersionString"), bundleString(@"CFBundleVersion")};
}

} // namespace orrivane
