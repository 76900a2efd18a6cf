#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

#include <objc/runtime.h>

namespace orrivane {
namespace {

// The updater asks for each of these before it calls it: a misspelt one would never be called.
TEST(SparkleDelegate, hasTheMethodsThatTheUpdaterCallsUnderTheUpdatersOwnNames) {
    Class delegate = NSClassFromString(@"ORVUpdaterDelegate");
    if (delegate == nil)
        GTEST_SKIP() << "this build has no updater: ORRIVANE_SPARKLE names none";
    Protocol* protocol = NSProtocolFromString(@"SPUStandardUserDriverDelegate");
    ASSERT_NE(protocol, nil);
    for (NSString* name in @[
             @"supportsGentleScheduledUpdateReminders",
             @"standardUserDriverShouldHandleShowingScheduledUpdate:andInImmediateFocus:",
             @"standardUserDriverWillHandleShowingUpdate:forUpdate:state:",
             @"standardUserDriverDidReceiveUserAttentionForUpdate:",
             @"standardUserDriverWillShowModalAlert",
             @"standardUserDriverWillFinishUpdateSession",
         ]) {
        const SEL selector = NSSelectorFromString(name);
        EXPECT_TRUE([delegate instancesRespondToSelector:selector]) << name.UTF8String;
        const auto declared = protocol_getMethodDescription(protocol, selector, NO, YES);
        EXPECT_NE(declared.name, nullptr) << name.UTF8String << " is not the updater's";
    }
}

} // namespace
} // namespace orrivane
