#import <macos/appkit/RunningApplications.h>

#import <macos/appkit/Conversions.h>

#import <AppKit/AppKit.h>

namespace orrivane::running {

namespace {

std::optional<std::string> text(NSString* value) {
    return value != nil ? std::optional(toString(value)) : std::nullopt;
}

RunningApplication describe(NSRunningApplication* application) {
    return {application.processIdentifier, text(application.localizedName),
            text(application.bundleIdentifier)};
}

std::optional<RunningApplication> describeIfAny(NSRunningApplication* application) {
    return application != nil ? std::optional(describe(application)) : std::nullopt;
}

} // namespace

std::vector<RunningApplication> applications() {
    std::vector<RunningApplication> found;
    for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications)
        found.push_back(describe(application));
    return found;
}

std::optional<RunningApplication> menuBarOwner() {
    return describeIfAny(NSWorkspace.sharedWorkspace.menuBarOwningApplication);
}

std::optional<RunningApplication> frontmost() {
    return describeIfAny(NSWorkspace.sharedWorkspace.frontmostApplication);
}

} // namespace orrivane::running
