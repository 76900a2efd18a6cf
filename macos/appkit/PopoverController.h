#pragma once

#import <AppKit/AppKit.h>

@class ORVScreenView;

/// The content of the popover, and its delegate. It closes the popover on clicks in other programs,
/// which a popover of a program that is not active may not hear of.
@interface ORVPopoverController : NSViewController <NSPopoverDelegate>

- (nonnull instancetype)initWithPopover:(nonnull NSPopover*)popover NS_DESIGNATED_INITIALIZER;
- (nonnull instancetype)initWithNibName:(nullable NSNibName)name
                                 bundle:(nullable NSBundle*)bundle NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(nonnull NSCoder*)coder NS_UNAVAILABLE;

@property (nonatomic, readonly, nonnull) ORVScreenView* screenView;

/// Whether the click that is being handled is the one that has just closed the popover. Asking
/// forgets it.
- (BOOL)takeClosingClick;

@end
