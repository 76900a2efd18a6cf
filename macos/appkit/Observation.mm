#import <macos/appkit/Observation.h>

#import <macos/appkit/MainThread.h>

#include <memory>
#include <utility>

namespace {

using Handler = std::shared_ptr<const std::function<void()>>;

// Tells the registrations of this class from those of a superclass.
int keyPathContext = 0;

} // namespace

@interface ORVKeyPathObserver : NSObject
- (instancetype)initWithHandler:(Handler)handler;
@end

@implementation ORVKeyPathObserver {
    Handler _handler;
}

- (instancetype)initWithHandler:(Handler)handler {
    self = [super init];
    if (self != nil)
        _handler = std::move(handler);
    return self;
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    if (context != &keyPathContext) {
        [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
        return;
    }
    // Weakly, so that a change that is still on its way finds nobody after the registration ended.
    orrivane::nowOrOnMainThread([weak = std::weak_ptr(_handler)] {
        if (const auto handler = weak.lock())
            orrivane::callOut(*handler);
    });
}

@end

namespace orrivane {

Subscription observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                 std::function<void()> notified) {
    auto handler = std::make_shared<const std::function<void()>>(std::move(notified));
    const std::weak_ptr weak = handler;
    const id<NSObject> token = [center addObserverForName:name
                                                   object:nil
                                                    queue:NSOperationQueue.mainQueue
                                               usingBlock:^(NSNotification*) {
                                                 // Posted elsewhere, it may come in after the
                                                 // registration has ended.
                                                 if (const auto alive = weak.lock())
                                                     callOut(*alive);
                                               }];
    return Subscription([center, token, handler] { [center removeObserver:token]; });
}

Subscription observeKeyPath(NSObject* object, NSString* keyPath, NSKeyValueObservingOptions options,
                            std::function<void()> changed) {
    auto* observer = [[ORVKeyPathObserver alloc]
        initWithHandler:std::make_shared<const std::function<void()>>(std::move(changed))];
    [object addObserver:observer forKeyPath:keyPath options:options context:&keyPathContext];
    return Subscription([object, keyPath, observer] {
        [object removeObserver:observer forKeyPath:keyPath context:&keyPathContext];
    });
}

} // namespace orrivane
