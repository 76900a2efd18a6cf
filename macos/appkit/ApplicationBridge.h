#pragma once

#include <Orrivane/platform/ApplicationDelegate.h>

#import <AppKit/AppKit.h>

#include <functional>

/// The application object's delegate, which that object does not keep.
@interface ORVApplicationDelegate : NSObject <NSApplicationDelegate>

/// `delegate` outlives this object. `willEnd` runs when the process is about to end inside the
/// application object, where no destructor runs.
- (nonnull instancetype)initWithDelegate:(nonnull orrivane::ApplicationDelegate*)delegate
                                 willEnd:(std::function<void()>)willEnd;

/// The user has launched the program again. Before it has finished launching this is remembered
/// until then. Gives whether the system may go on with what it does by itself.
- (BOOL)reopenWithVisibleWindows:(BOOL)hasVisibleWindows;

@end
