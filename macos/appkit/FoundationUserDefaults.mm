#import <macos/appkit/FoundationUserDefaults.h>

#import <macos/appkit/Conversions.h>
#import <macos/appkit/Observation.h>

namespace orrivane {

void FoundationUserDefaults::registerDefault(std::string_view key, bool value) {
    // Fallbacks live in memory only, so every launch registers them anew.
    [NSUserDefaults.standardUserDefaults registerDefaults:@{toNSString(key) : @(value)}];
    watch(key);
}

bool FoundationUserDefaults::boolForKey(std::string_view key) {
    watch(key);
    return [NSUserDefaults.standardUserDefaults boolForKey:toNSString(key)];
}

void FoundationUserDefaults::setBool(std::string_view key, bool value) {
    watch(key);
    [NSUserDefaults.standardUserDefaults setBool:value forKey:toNSString(key)];
}

Subscription FoundationUserDefaults::onChange(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

void FoundationUserDefaults::watch(std::string_view key) {
    if (watched_.contains(key))
        return;
    watched_.emplace(key,
                     observeKeyPath(NSUserDefaults.standardUserDefaults, toNSString(key),
                                    NSKeyValueObservingOptionNew, [this] { observers_.notify(); }));
}

} // namespace orrivane
