#include <macos/system/QuartzWindowList.h>

#import "support/Desktop.h"
#import "support/Pump.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

// Not the suite of the contract: the list of what is on screen has the wallpaper too, which the
// full list is asked to leave out, and a status item's window may belong to another process.

namespace orrivane {
namespace {

class QuartzWindowListTest : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto reason = whyNoDesktop())
            GTEST_SKIP() << *reason;
    }
    static std::optional<WindowListEntry> find(const std::vector<WindowListEntry>& entries,
                                               std::int64_t number) {
        const auto wanted = std::optional(static_cast<std::uint32_t>(number));
        const auto found = std::ranges::find(entries, wanted, &WindowListEntry::number);
        return found == entries.end() ? std::nullopt : std::optional(*found);
    }
    NSWindow* makeWindow() {
        NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(120, 140, 200, 100)
                                                       styleMask:NSWindowStyleMaskBorderless
                                                         backing:NSBackingStoreBuffered
                                                           defer:NO];
        window.releasedWhenClosed = NO;
        window.animationBehavior = NSWindowAnimationBehaviorNone;
        return window;
    }

    QuartzWindowList list;
};

TEST_F(QuartzWindowListTest, everyWindowHasANumberOfItsOwnALayerAndAPlace) {
    const auto entries = list.allWindows();
    ASSERT_FALSE(entries.empty());
    std::vector<std::uint32_t> numbers;
    for (const auto& entry : entries) {
        ASSERT_TRUE(entry.number);
        EXPECT_NE(*entry.number, 0U);
        EXPECT_TRUE(entry.layer) << *entry.number;
        ASSERT_TRUE(entry.bounds) << *entry.number;
        EXPECT_GE(entry.bounds->width(), 0) << *entry.number;
        EXPECT_GE(entry.bounds->height(), 0) << *entry.number;
        numbers.push_back(*entry.number);
    }
    std::ranges::sort(numbers);
    EXPECT_EQ(std::ranges::adjacent_find(numbers), numbers.end());
}

TEST_F(QuartzWindowListTest, whatIsOnScreenIsSaidToBeOnScreen) {
    const auto entries = list.onscreenWindows();
    ASSERT_FALSE(entries.empty());
    for (const auto& entry : entries)
        EXPECT_NE(entry.onscreen, std::optional(false));
}

TEST_F(QuartzWindowListTest, everyWindowHasAnOwner) {
    const auto entries = list.ownedWindows();
    ASSERT_FALSE(entries.empty());
    for (const auto& entry : entries)
        EXPECT_TRUE(entry.process);
}

TEST_F(QuartzWindowListTest, aWindowIsListedWhereItStandsCountedFromTheTop) {
    NSWindow* window = makeWindow();
    [window orderFrontRegardless];
    ASSERT_TRUE(
        pumpUntil([&] { return find(list.onscreenWindows(), window.windowNumber).has_value(); }));
    const auto entry = find(list.allWindows(), window.windowNumber);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->layer, 0);
    const double top = CGDisplayBounds(CGMainDisplayID()).size.height;
    const NSRect frame = window.frame;
    const Rect expected{{NSMinX(frame), top - NSMaxY(frame)},
                        {frame.size.width, frame.size.height}};
    EXPECT_EQ(entry->bounds, expected);
    [window close];
}

TEST_F(QuartzWindowListTest, aWindowThatIsPutAwayIsOnScreenNoLonger) {
    NSWindow* window = makeWindow();
    const auto number = window.windowNumber;
    [window orderFrontRegardless];
    ASSERT_TRUE(pumpUntil([&] { return find(list.onscreenWindows(), number).has_value(); }));
    [window orderOut:nil];
    EXPECT_TRUE(pumpUntil([&] { return !find(list.onscreenWindows(), number); }));
    EXPECT_TRUE(find(list.allWindows(), number));
    [window close];
}

TEST_F(QuartzWindowListTest, theOwnWindowsBelongToThisProcess) {
    NSWindow* window = makeWindow();
    [window orderFrontRegardless];
    const auto owner = [&]() -> std::optional<std::int32_t> {
        for (const auto& each : list.ownedWindows())
            if (each.window.number == static_cast<std::uint32_t>(window.windowNumber))
                return each.process;
        return std::nullopt;
    };
    EXPECT_TRUE(pumpUntil([&] { return owner() == getpid(); }));
    [window close];
}

} // namespace
} // namespace orrivane
