#pragma once

#import <Cocoa/Cocoa.h>

#include <Orrivane/view/View.h>

/// The content of the tray's panel: a row of buttons, each exactly as large as its drawing, the
/// row centred in the panel. Takes clicks in a window that is not key, also on clear pixels. Main
/// thread only.
@interface ORVStripPanelView : NSView

/// Cells are known again by their key; only what differs is set.
- (void)setRoot:(const orrivane::View&)root;

@end
