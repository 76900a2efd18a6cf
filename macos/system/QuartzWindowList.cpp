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

OwnedWindow ownedEntryOf(CFDictionaryRef window) {
    return {entryOf(window), cf::process(CFDictionaryGetValue(window, kCGWindowOwnerPID)),
            cf::text(CFDictionaryGetValue(window, kCGWindowOwnerName))};
}

template <typename Entry>
std::vector<Entry> windows(CGWindowListOption option, Entry (*read)(CFDictionaryRef)) {
    std::vector<Entry> entries;
    const auto list =
        CFRef<CFArrayRef>::adopting(CGWindowListCopyWindowInfo(option, kCGNullWindowID));
    if (!list)
        return entries;
    const CFIndex count = CFArrayGetCount(list.get());
    entries.reserve(static_cast<std::size_t>(count));
    for (CFIndex i = 0; i < count; ++i)
        if (const auto window = cf::dictionary(CFArrayGetValueAtIndex(list.get(), i)))
            entries.push_back(read(window));
    return entries;
}

} // namespace

// Without the on-screen option that means every window there is, also those off screen.
std::vector<WindowListEntry> QuartzWindowList::allWindows() {
    return windows(kCGWindowListExcludeDesktopElements, entryOf);
}

std::vector<WindowListEntry> QuartzWindowList::onscreenWindows() {
    return windows(kCGWindowListOptionOnScreenOnly, entryOf);
}

std::vector<OwnedWindow> QuartzWindowList::ownedWindows() {
    return windows(kCGWindowListExcludeDesktopElements, ownedEntryOf);
}

} // namespace orrivane
