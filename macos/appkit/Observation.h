#pragma once

#include <Orrivane/support/Subscription.h>

#import <Foundation/Foundation.h>

#include <functional>

namespace orrivane {

/// `notified` runs on the main thread; the observer goes back to the centre it came from.
Subscription observeNotification(NSNotificationCenter* _Nonnull center,
                                 NSNotificationName _Nonnull name, std::function<void()> notified);

/// `changed` runs on the main thread after the property changed, wherever that happened; with
/// NSKeyValueObservingOptionInitial also inside this call.
Subscription observeKeyPath(NSObject* _Nonnull object, NSString* _Nonnull keyPath,
                            NSKeyValueObservingOptions options, std::function<void()> changed);

} // namespace orrivane
