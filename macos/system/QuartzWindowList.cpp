#include <macos/system/QuartzWindowList.h>

#include <macos/system/CFTypes.h>
#include <macos/system/CGGeometry.h>

#include <CoreGraphics/CoreGraphics.h>

namespace orrivane {

namespace {

std::optional<Rect> boundsOf(CFTypeRef value) {
    const auto representation = cf::dictionary(value);
    CGRect rect = {};
    if (!representation || !CGRectMakeWithDictionaryRepresentation(representation, &rect))
        return std::nullopt;
    return rectFrom(rect);
}

WindowListEntry entryOf(CFDictionaryRef window) {
    const auto value = [&](CFStringRef key) { return CFDictionaryGetValue(window, key); };
    return {cf::integer(value(kCGWindowLayer)), cf::unsignedInteger(value(kCGWindowNumber)),
            boundsOf(value(kCGWindowBounds)), cf::boolean(value(kCGWindowIsOnscreen))};
}

std::vector<WindowListEntry> windows(CGWindowListOption option) {
    std::vector<WindowListEntry> entries;
    const auto list =
        CFRef<CFArrayRef>::adopting(CGWindowListCopyWindowInfo(option, kCGNullWindowID));
    if (!list)
        return entries;
    const CFIndex count = CFArrayGetCount(list.get());
    entries.reserve(static_cast<std::size_t>(count));
    for (CFIndex i = 0; i < count; ++i)
        if (const auto window = cf::dictionary(CFArrayGetValueAtIndex(list.get(), i)))
            entries.push_back(entryOf(window));
    return entries;
}

} // namespace

// Without the on-screen option that means every window there is, also those off screen.
std::vector<WindowListEntry> QuartzWindowList::allWindows() {
    return windows(kCGWindowListExcludeDesktopElements);
}

std::vector<WindowListEntry> QuartzWindowList::onscreenWindows() {
    return windows(kCGWindowListOptionOnScreenOnly);
}

} // namespace orrivane
