#pragma once

#import <Cocoa/Cocoa.h>

NS_ASSUME_NONNULL_BEGIN

/// What a control sends its action to; controls do not keep their target, so its owner does.
@interface ORVActionTarget : NSObject

+ (instancetype)targetOf:(NSControl*)control run:(void (^)(void))run;

@end

NS_ASSUME_NONNULL_END
