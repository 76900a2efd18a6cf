#import "Desktop.h"

#include <gtest/gtest.h>

namespace {

/// Made only when tests run: listing them needs no desktop.
class Application : public ::testing::Environment {
  public:
    void SetUp() override {
        if (orrivane::whyNoDesktop())
            return;
        // An exception out of an event or a drawing would else be logged and forgotten.
        [NSUserDefaults.standardUserDefaults registerDefaults:@{
            @"NSApplicationCrashOnExceptions" : @YES
        }];
        [NSApplication sharedApplication];
        [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];
        [NSApp finishLaunching];
    }
};

} // namespace

int main(int argc, char** argv) {
    @autoreleasepool {
        ::testing::InitGoogleTest(&argc, argv);
        ::testing::AddGlobalTestEnvironment(new Application);
        return RUN_ALL_TESTS();
    }
}
