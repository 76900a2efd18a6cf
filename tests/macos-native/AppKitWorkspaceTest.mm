#import <macos/appkit/AppKitWorkspace.h>

#import "support/Desktop.h"
#import "support/Pump.h"

#include <gtest/gtest.h>

#include <string>

/// Counts requests to end the program and refuses them.
@interface ORVReluctantDelegate : NSObject <NSApplicationDelegate>
@property (nonatomic) int requests;
@end

@implementation ORVReluctantDelegate

- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)__unused application {
    ++self.requests;
    return NSTerminateCancel;
}

@end

// Not the suite of the contract: it opens an address, which would be the user's browser.

namespace orrivane {
namespace {

class AppKitWorkspaceTest : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto reason = whyNoDesktop())
            GTEST_SKIP() << *reason;
    }
    // As the system does it, but inside this process only.
    static void cause(SystemNotification notification) {
        NSNotificationCenter* workspace = NSWorkspace.sharedWorkspace.notificationCenter;
        const auto post = [](NSNotificationCenter* center, NSNotificationName name) {
            [center postNotificationName:name object:nil];
        };
        switch (notification) {
        case SystemNotification::didActivateApplication:
            return post(workspace, NSWorkspaceDidActivateApplicationNotification);
        case SystemNotification::willSleep:
            return post(workspace, NSWorkspaceWillSleepNotification);
        case SystemNotification::screensDidSleep:
            return post(workspace, NSWorkspaceScreensDidSleepNotification);
        case SystemNotification::didWake:
            return post(workspace, NSWorkspaceDidWakeNotification);
        case SystemNotification::screensDidWake:
            return post(workspace, NSWorkspaceScreensDidWakeNotification);
        case SystemNotification::didChangeScreenParameters:
            return post(NSNotificationCenter.defaultCenter,
                        NSApplicationDidChangeScreenParametersNotification);
        }
    }

    AppKitWorkspace workspace;
};

TEST_F(AppKitWorkspaceTest, everyNotificationReachesItsObserversWhileTheirHandlesLive) {
    for (const auto notification :
         {SystemNotification::didActivateApplication, SystemNotification::willSleep,
          SystemNotification::screensDidSleep, SystemNotification::didWake,
          SystemNotification::screensDidWake, SystemNotification::didChangeScreenParameters}) {
        int ended = 0;
        int told = 0;
        auto dying = workspace.observe(notification, [&] { ++ended; });
        const auto observer = workspace.observe(notification, [&] { ++told; });
        EXPECT_EQ(told, 0);
        dying.reset();
        cause(notification);
        EXPECT_TRUE(pumpUntil([&] { return told > 0; })) << static_cast<int>(notification);
        EXPECT_EQ(ended, 0) << static_cast<int>(notification);
    }
}

TEST_F(AppKitWorkspaceTest, aChangeOfScreensIsNotTakenForSleep) {
    int sleeps = 0;
    int changes = 0;
    const auto sleep = workspace.observe(SystemNotification::willSleep, [&] { ++sleeps; });
    const auto change =
        workspace.observe(SystemNotification::didChangeScreenParameters, [&] { ++changes; });
    cause(SystemNotification::didChangeScreenParameters);
    ASSERT_TRUE(pumpUntil([&] { return changes > 0; }));
    EXPECT_EQ(sleeps, 0);
}

TEST_F(AppKitWorkspaceTest, whatIsNoAddressIsRefused) {
    EXPECT_FALSE(workspace.open(""));
    EXPECT_FALSE(workspace.open("no address"));
    EXPECT_FALSE(workspace.open("/no/scheme"));
}

TEST_F(AppKitWorkspaceTest, theProgramIsAskedToEndOnALaterTurn) {
    ORVReluctantDelegate* delegate = [[ORVReluctantDelegate alloc] init];
    NSApp.delegate = delegate;
    workspace.terminate();
    EXPECT_EQ(delegate.requests, 0);
    EXPECT_TRUE(pumpUntil([&] { return delegate.requests == 1; }));
    NSApp.delegate = nil;
}

TEST_F(AppKitWorkspaceTest, theProgramHasAVersionOutsideABundleToo) {
    const auto versions = workspace.versionStrings();
    EXPECT_NE(versions.version.find('.'), std::string::npos);
    EXPECT_FALSE(versions.build.empty());
}

} // namespace
} // namespace orrivane
