#import "support/DesktopWorld.h"
#import "support/PopoverStage.h"

#include <tests/support/contracts/PopoverContract.h>

namespace orrivane {
namespace {

struct PopoverWorld : DesktopWorld<PopoverStage> {
    [[nodiscard]] std::optional<std::string> whyUnavailable() {
        const auto reason = DesktopWorld::whyUnavailable();
        return reason ? reason : body().whyHidden();
    }
    Popover& popover() { return body().popover; }
    StatusItem& item() { return body().item; }
    View root() { return someText(); }
    Size contentSize() {
        const NSSize size =
            firstView(PopoverStage::window().contentView, ORVScreenView.class).frame.size;
        return {size.width, size.height};
    }
    // It would take the permission to press for the user.
    bool clickElsewhere() { return false; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(AppKit, PopoverContract, PopoverWorld);

TEST(AppKitPopover, withoutARootNothingIsShownAndNothingBreaks) {
    if (const auto reason = whyNoDesktop())
        GTEST_SKIP() << *reason;
    PopoverStage stage;
    stage.popover.setContentSize({400, 300});
    stage.popover.show(stage.item);
    EXPECT_FALSE(stage.popover.isShown());
}

/// Makes it the event that the application object is busy with.
void hear(NSEventType type, NSInteger number) {
    NSEvent* event = [NSEvent mouseEventWithType:type
                                        location:NSZeroPoint
                                   modifierFlags:0
                                       timestamp:NSProcessInfo.processInfo.systemUptime
                                    windowNumber:0
                                         context:nil
                                     eventNumber:number
                                      clickCount:1
                                        pressure:1];
    [NSApp postEvent:event atStart:YES];
    [NSApp nextEventMatchingMask:NSEventMaskFromType(type)
                       untilDate:nil
                          inMode:NSDefaultRunLoopMode
                         dequeue:YES];
}

TEST(AppKitPopover, theClickThatClosedItDoesNotOpenItAgainAndTheNextOneDoes) {
    if (const auto reason = whyNoDesktop())
        GTEST_SKIP() << *reason;
    PopoverStage stage;
    if (const auto reason = stage.whyHidden())
        GTEST_SKIP() << *reason;
    stage.popover.setRoot(someText());
    stage.popover.setContentSize({400, 300});
    stage.popover.show(stage.item);
    ASSERT_TRUE(stage.popover.isShown());
    hear(NSEventTypeLeftMouseDown, 41);
    stage.popover.performClose();
    ASSERT_TRUE(pumpUntil([&] { return !stage.popover.isShown(); }));
    hear(NSEventTypeLeftMouseUp, 41);
    stage.popover.show(stage.item);
    EXPECT_FALSE(stage.popover.isShown());
    hear(NSEventTypeLeftMouseUp, 42);
    stage.popover.show(stage.item);
    EXPECT_TRUE(stage.popover.isShown());
}

// What Escape and Command-W send, whether or not controls take the keyboard here.
TEST(AppKitPopover, closesByItsKeys) {
    if (const auto reason = whyNoDesktop())
        GTEST_SKIP() << *reason;
    PopoverStage stage;
    if (const auto reason = stage.whyHidden())
        GTEST_SKIP() << *reason;
    stage.popover.setRoot({.node = Button{.style = ButtonStyle::bordered, .title = "Orrivane"}});
    stage.popover.setContentSize({400, 300});
    for (const SEL command : { @selector(cancelOperation:), @selector(performClose:) }) {
        stage.popover.show(stage.item);
        ASSERT_TRUE(pumpUntil([&] { return PopoverStage::window() != nil; }));
        NSResponder* focused = PopoverStage::window().firstResponder;
        EXPECT_TRUE([focused tryToPerform:command with:nil]) << sel_getName(command);
        EXPECT_TRUE(pumpUntil([&] {
            return !stage.popover.isShown() && PopoverStage::window() == nil;
        })) << sel_getName(command);
    }
}

} // namespace
} // namespace orrivane
