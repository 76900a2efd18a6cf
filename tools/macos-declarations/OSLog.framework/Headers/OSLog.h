// OSLog as far as the tests that run on a Mac use it, for tools/check-macos alone.
// Compared: selectors, types and availability of store and enumerator with the framework's own
// headers, which come with Xcode; `composedMessage` and `entriesEnumeratorAndReturnError:` only
// with how others use them.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, OSLogStoreScope) {
    OSLogStoreSystem = 0,
    OSLogStoreCurrentProcessIdentifier = 1,
};

@interface OSLogEntry : NSObject
@property (nonatomic, readonly, copy) NSString* composedMessage;
@end

@interface OSLogEnumerator : NSEnumerator
@end

@interface OSLogStore : NSObject
+ (nullable instancetype)storeWithScope:(OSLogStoreScope)scope
                                  error:(NSError* _Nullable* _Nullable)error
    API_AVAILABLE(macos(12.0));
- (nullable OSLogEnumerator*)entriesEnumeratorAndReturnError:(NSError* _Nullable* _Nullable)error;
@end

NS_ASSUME_NONNULL_END
