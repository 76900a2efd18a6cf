#pragma once

#include <Orrivane/support/Geometry.h>

#import <AppKit/AppKit.h>

#include <optional>
#include <string>

namespace orrivane {

/// Why nothing can be shown here, or absent. Without a login session the application object would
/// end the process, so nothing of AppKit's screen side is touched then.
std::optional<std::string> whyNoDesktop();

/// The window of this process that is shown and holds a view of that class, at any depth, or is of
/// that class itself; nil without one.
NSWindow* _Nullable shownWindowOf(Class _Nonnull kind);

/// The first view of that class in `root` or below; nil without one.
NSView* _Nullable firstView(NSView* _Nullable root, Class _Nonnull kind);

/// The frame that the window server gives a window of any process, as AppKit counts: from the
/// bottom left corner of the primary screen. Absent for a number that it does not know.
std::optional<Rect> frameByWindowServer(std::int64_t number);
/// Whether the window server has it on screen.
bool isOnScreen(std::int64_t number);
/// The number of some window on screen that belongs to another process; 0 without one.
std::int64_t foreignWindow();

} // namespace orrivane
