#import <macos/appkit/MakeUpdater.h>

#import <macos/appkit/Conversions.h>
#import <macos/appkit/MainThread.h>
#import <macos/appkit/Observation.h>

#import <Sparkle/Sparkle.h>

#include <functional>
#include <utility>

/// Forwards what the updater asks and tells. All of its methods are optional to the updater: one
/// with a wrong name would compile and never be called.
@interface ORVUpdaterDelegate : NSObject <SPUUpdaterDelegate, SPUStandardUserDriverDelegate>
/// `delegate` lives as long as the updater calls this object.
- (instancetype)initWithDelegate:(orrivane::UpdaterDelegate*)delegate
                  willShowWindow:(std::function<void()>)willShowWindow;
@end

@implementation ORVUpdaterDelegate {
    orrivane::UpdaterDelegate* _delegate;
    std::function<void()> _willShowWindow;
}

- (instancetype)initWithDelegate:(orrivane::UpdaterDelegate*)delegate
                  willShowWindow:(std::function<void()>)willShowWindow {
    self = [super init];
    if (self != nil) {
        _delegate = delegate;
        _willShowWindow = std::move(willShowWindow);
    }
    return self;
}

- (BOOL)supportsGentleScheduledUpdateReminders {
    bool supports = false;
    orrivane::callOut([&] { supports = _delegate->supportsGentleScheduledUpdateReminders(); });
    return supports;
}

- (BOOL)standardUserDriverShouldHandleShowingScheduledUpdate:(SUAppcastItem*)__unused update
                                         andInImmediateFocus:(BOOL)immediateFocus {
    bool shows = false;
    orrivane::callOut(
        [&] { shows = _delegate->shouldHandleShowingScheduledUpdate(immediateFocus); });
    return shows;
}

- (void)standardUserDriverWillHandleShowingUpdate:(BOOL)handleShowingUpdate
                                        forUpdate:(SUAppcastItem*)update
                                            state:(SPUUserUpdateState*)__unused state {
    orrivane::callOut([&] {
        if (handleShowingUpdate)
            _willShowWindow();
        _delegate->willHandleShowingUpdate(handleShowingUpdate,
                                           orrivane::toString(update.displayVersionString));
    });
}

- (void)standardUserDriverDidReceiveUserAttentionForUpdate:(SUAppcastItem*)__unused update {
    orrivane::callOut([&] { _delegate->didReceiveUserAttention(); });
}

// The popover may have been opened again since the check began; it stays while an alert is modal.
- (void)standardUserDriverWillShowModalAlert {
    orrivane::callOut([&] { _willShowWindow(); });
}

- (void)standardUserDriverWillFinishUpdateSession {
    orrivane::callOut([&] { _delegate->willFinishUpdateSession(); });
}

@end

namespace orrivane {

namespace {

bool bundleSays(NSString* key) {
    const id value = [NSBundle.mainBundle objectForInfoDictionaryKey:key];
    return [value isKindOfClass:NSString.class] && [value length] != 0;
}

// An updater that is started without them reports the mistake to the user.
bool isConfigured() {
    return bundleSays(@"SUFeedURL") && bundleSays(@"SUPublicEDKey");
}

/// Sparkle. Without a feed and a key in the bundle it is made, but not started.
class SparkleUpdater : public Updater {
  public:
    explicit SparkleUpdater(std::function<void()> willShowWindow)
        : willShowWindow_(std::move(willShowWindow)) {}

    void create(UpdaterDelegate& delegate) override {
        isStarted_ = isConfigured();
        delegate_ = [[ORVUpdaterDelegate alloc] initWithDelegate:&delegate
                                                  willShowWindow:willShowWindow_];
        controller_ = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:isStarted_
                                                                    updaterDelegate:delegate_
                                                                 userDriverDelegate:delegate_];
    }
    void checkForUpdates() override {
        if (!isStarted_)
            return;
        willShowWindow_();
        [controller_ checkForUpdates:nil];
    }
    bool canCheckForUpdates() override {
        return isStarted_ && controller_.updater.canCheckForUpdates;
    }
    Subscription observeCanCheck(std::function<void()> changed) override {
        const auto options = NSKeyValueObservingOptionNew | NSKeyValueObservingOptionInitial;
        return observeKeyPath(controller_.updater, @"canCheckForUpdates", options,
                              std::move(changed));
    }
    bool automaticallyChecksForUpdates() override {
        return controller_.updater.automaticallyChecksForUpdates;
    }
    void setAutomaticallyChecksForUpdates(bool automatically) override {
        controller_.updater.automaticallyChecksForUpdates = automatically;
    }

  private:
    std::function<void()> willShowWindow_;
    bool isStarted_ = false;
    ORVUpdaterDelegate* delegate_ = nil; // the controller does not keep it
    SPUStandardUpdaterController* controller_ = nil;
};

} // namespace

std::unique_ptr<Updater> makeUpdater(std::function<void()> willShowWindow) {
    return std::make_unique<SparkleUpdater>(std::move(willShowWindow));
}

} // namespace orrivane
