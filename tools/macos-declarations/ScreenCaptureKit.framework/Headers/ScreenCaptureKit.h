// ScreenCaptureKit as far as Orrivane uses it, for tools/check-macos alone.
// Compared: selectors, types, nullability and availability with the framework's own headers
// of macOS 14, which come with Xcode.
#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, SCCaptureResolutionType) {
    SCCaptureResolutionAutomatic = 0,
    SCCaptureResolutionBest = 1,
    SCCaptureResolutionNominal = 2,
} API_AVAILABLE(macos(14.0));

API_AVAILABLE(macos(12.3))
@interface SCWindow : NSObject
@property (readonly) CGWindowID windowID;
@property (readonly) CGRect frame;
- (instancetype)init NS_UNAVAILABLE;
@end

API_AVAILABLE(macos(12.3))
@interface SCShareableContent : NSObject
@property (readonly) NSArray<SCWindow*>* windows;
+ (void)getShareableContentExcludingDesktopWindows:(BOOL)excludeDesktopWindows
                               onScreenWindowsOnly:(BOOL)onScreenWindowsOnly
                                 completionHandler:
                                     (void (^)(SCShareableContent* _Nullable content,
                                               NSError* _Nullable error))completionHandler;
- (instancetype)init NS_UNAVAILABLE;
@end

API_AVAILABLE(macos(12.3))
@interface SCContentFilter : NSObject
- (instancetype)initWithDesktopIndependentWindow:(SCWindow*)window;
@end

API_AVAILABLE(macos(12.3))
@interface SCStreamConfiguration : NSObject
@property (nonatomic) size_t width;
@property (nonatomic) size_t height;
@property (nonatomic) BOOL showsCursor;
@property (nonatomic) SCCaptureResolutionType captureResolution API_AVAILABLE(macos(14.0));
@end

API_AVAILABLE(macos(14.0))
@interface SCScreenshotManager : NSObject
+ (void)captureImageWithFilter:(SCContentFilter*)filter
                 configuration:(SCStreamConfiguration*)configuration
             completionHandler:(nullable void (^)(CGImageRef _Nullable image,
                                                  NSError* _Nullable error))completionHandler;
- (instancetype)init NS_UNAVAILABLE;
@end

NS_ASSUME_NONNULL_END
