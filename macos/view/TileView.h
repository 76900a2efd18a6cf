#pragma once

#import <macos/view/DrawnControl.h>

NS_ASSUME_NONNULL_BEGIN

/// Sent to the default centre when a drag that a tile began is over and everyone knows.
extern NSNotificationName const ORVTileDragDidEndNotification;

/// A picture that can be dragged, with plain text, and dropped on. Where it has the keyboard, the
/// arrow keys take it along while Option is held, and letting go drops it.
@interface ORVTileView : ORVDrawnControl <NSDraggingSource>

/// Whether a drag that some tile began is not over yet.
@property (class, nonatomic, readonly) BOOL dragIsInProgress;

- (void)setTile:(const orrivane::Tile&)tile;

@end

NS_ASSUME_NONNULL_END
