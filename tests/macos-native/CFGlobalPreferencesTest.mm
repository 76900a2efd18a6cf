#include <macos/system/CFGlobalPreferences.h>

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <cmath>
#include <optional>

// The body knows one store only, the user's own, so these tests read and never write.

namespace orrivane {
namespace {

/// What the system's own tool reads; absent where it finds nothing or no number.
std::optional<double> readByTool(NSString* key) {
    NSPipe* pipe = [NSPipe pipe];
    NSTask* task = [[NSTask alloc] init];
    task.executableURL = [NSURL fileURLWithPath:@"/usr/bin/defaults" isDirectory:NO];
    task.arguments = @[ @"-currentHost", @"read", @"-g", key ];
    task.standardOutput = pipe;
    task.standardError = NSFileHandle.fileHandleWithNullDevice;
    if (![task launchAndReturnError:nil])
        return std::nullopt;
    NSData* data = [pipe.fileHandleForReading readDataToEndOfFileAndReturnError:nil];
    [task waitUntilExit];
    NSString* text = [[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding];
    double value = 0;
    if (task.terminationStatus != 0 || ![[NSScanner scannerWithString:text] scanDouble:&value])
        return std::nullopt;
    return value;
}

TEST(CFGlobalPreferences, aKeyNobodySetIsAbsent) {
    EXPECT_EQ(CFGlobalPreferences().copyValue("OrrivaneKeyThatNobodySets"), std::nullopt);
}

TEST(CFGlobalPreferences, readsTheSpacingWhereTheSystemsOwnToolReadsIt) {
    for (NSString* key in @[ @"NSStatusItemSpacing", @"NSStatusItemSelectionPadding" ]) {
        const auto expected = readByTool(key);
        const auto value = CFGlobalPreferences().copyValue(key.UTF8String);
        ASSERT_EQ(value.has_value(), expected.has_value()) << key.UTF8String;
        if (value)
            EXPECT_LE(std::abs(static_cast<double>(*value) - *expected), 1) << key.UTF8String;
    }
}

} // namespace
} // namespace orrivane
