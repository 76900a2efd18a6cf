#import <macos/appkit/FoundationUserDefaults.h>

#import "support/Pump.h"

#import <macos/appkit/Conversions.h>
#include <tests/support/contracts/UserDefaultsContract.h>

#import <Foundation/Foundation.h>

#include <memory>
#include <optional>
#include <string>

namespace orrivane {
namespace {

/// The domain of the test program itself: outside of a bundle the system names it after the
/// executable, so that the program's own settings are never touched.
struct StandardDefaultsWorld {
    std::unique_ptr<FoundationUserDefaults> body = std::make_unique<FoundationUserDefaults>();
    NSDictionary* fallbacks = [defaultsOfProcess() volatileDomainForName:NSRegistrationDomain];

    StandardDefaultsWorld() { removeDomain(); }
    StandardDefaultsWorld(const StandardDefaultsWorld&) = delete;
    StandardDefaultsWorld& operator=(const StandardDefaultsWorld&) = delete;
    ~StandardDefaultsWorld() {
        body.reset();
        removeDomain();
        forgetFallbacks();
    }

    [[nodiscard]] std::optional<std::string> whyUnavailable() const {
        if (NSBundle.mainBundle.bundleIdentifier != nil)
            return "the test runs inside a bundle, whose settings it must not touch";
        return std::nullopt;
    }
    UserDefaults& defaults() { return *body; }
    // Fallbacks live as long as the process; for a new body they are those of a new process.
    void reopen() {
        body.reset();
        forgetFallbacks();
        body = std::make_unique<FoundationUserDefaults>();
    }
    bool changeElsewhere(std::string_view key, bool value) {
        NSTask* task = [[NSTask alloc] init];
        task.executableURL = [NSURL fileURLWithPath:@"/usr/bin/defaults" isDirectory:NO];
        task.arguments =
            @[ @"write", domain(), toNSString(key), @"-bool", value ? @"true" : @"false" ];
        if (![task launchAndReturnError:nil])
            return false;
        [task waitUntilExit];
        return task.terminationStatus == 0;
    }
    template <typename Condition>
    bool pumpUntil(Condition condition) {
        return orrivane::pumpUntil(condition);
    }

  private:
    static NSUserDefaults* defaultsOfProcess() { return NSUserDefaults.standardUserDefaults; }
    static NSString* domain() { return NSProcessInfo.processInfo.processName; }
    static void removeDomain() {
        if (NSBundle.mainBundle.bundleIdentifier == nil)
            [defaultsOfProcess() removePersistentDomainForName:domain()];
    }
    void forgetFallbacks() {
        [defaultsOfProcess() removeVolatileDomainForName:NSRegistrationDomain];
        [defaultsOfProcess() setVolatileDomain:fallbacks forName:NSRegistrationDomain];
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Standard, UserDefaultsContract, StandardDefaultsWorld);

} // namespace
} // namespace orrivane
