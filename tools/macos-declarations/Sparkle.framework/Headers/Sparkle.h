// Sparkle as far as Orrivane uses it, for tools/check-macos alone; a build on a Mac has the real
// one. Compared: selectors, types and nullability with the public headers of Sparkle 2.6.4.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

// All of it is optional, and none of it is used.
@protocol SPUUpdaterDelegate <NSObject>
@end

@interface SUAppcastItem : NSObject
@property (nonatomic, copy, readonly) NSString* displayVersionString;
@end

@interface SPUUserUpdateState : NSObject
@property (nonatomic, readonly) BOOL userInitiated;
- (instancetype)init NS_UNAVAILABLE;
@end

@protocol SPUStandardUserDriverDelegate <NSObject>
@optional
@property (nonatomic, readonly) BOOL supportsGentleScheduledUpdateReminders;
- (BOOL)standardUserDriverShouldHandleShowingScheduledUpdate:(SUAppcastItem*)update
                                         andInImmediateFocus:(BOOL)immediateFocus;
- (void)standardUserDriverWillHandleShowingUpdate:(BOOL)handleShowingUpdate
                                        forUpdate:(SUAppcastItem*)update
                                            state:(SPUUserUpdateState*)state;
- (void)standardUserDriverDidReceiveUserAttentionForUpdate:(SUAppcastItem*)update;
- (void)standardUserDriverWillShowModalAlert;
- (void)standardUserDriverWillFinishUpdateSession;
@end

@interface SPUUpdater : NSObject
@property (nonatomic, readonly) BOOL canCheckForUpdates;
@property (nonatomic) BOOL automaticallyChecksForUpdates;
- (instancetype)init NS_UNAVAILABLE;
@end

@interface SPUStandardUpdaterController : NSObject
@property (nonatomic, readonly) SPUUpdater* updater;
- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(nullable id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:
                         (nullable id<SPUStandardUserDriverDelegate>)userDriverDelegate;
- (void)checkForUpdates:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
