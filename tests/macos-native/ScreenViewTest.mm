#import <macos/view/ScreenView.h>

#import "support/Desktop.h"
#import "support/EveryKind.h"
#import "support/Pump.h"

#include <tests/unit/MainViewFixture.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {
namespace {

/// A window that is never shown, with the screen as its whole content.
struct Place {
    ORVScreenView* screen = [[ORVScreenView alloc] initInWindow:YES];
    NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 480, 360)
                                                   styleMask:NSWindowStyleMaskBorderless
                                                     backing:NSBackingStoreBuffered
                                                       defer:YES];

    Place() {
        window.releasedWhenClosed = NO;
        screen.frame = window.contentView.bounds;
        [window.contentView addSubview:screen];
    }
    [[nodiscard]] double height(double width = 480) const {
        return [screen naturalHeightForWidth:width];
    }
    /// Everything draws itself once.
    [[nodiscard]] bool draws() const {
        NSBitmapImageRep* bitmap = [screen bitmapImageRepForCachingDisplayInRect:screen.bounds];
        if (bitmap != nil)
            [screen cacheDisplayInRect:screen.bounds toBitmapImageRep:bitmap];
        return bitmap != nil;
    }
    template <typename Control>
    Control* first() const {
        return static_cast<Control*>(firstView(screen, [Control class]));
    }
};

View column(std::vector<View> children) {
    return {.node = VerticalStack{.spacing = 4, .children = std::move(children)}};
}

View button(std::string title, std::function<void()> action) {
    return {.node = Button{.style = ButtonStyle::bordered,
                           .action = {std::move(action)},
                           .title = std::move(title)}};
}

class ScreenViewTest : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto reason = whyNoDesktop())
            GTEST_SKIP() << *reason;
    }
};

TEST_F(ScreenViewTest, everyKindOfNodeIsBuiltDrawnAndGivenANewValue) {
    std::set<std::size_t> kinds;
    for (const auto& [view, height] : everyKind()) {
        const auto kind = view.node.index();
        kinds.insert(kind);
        @autoreleasepool {
            const Place place;
            [place.screen setRoot:view];
            EXPECT_GE(place.height(), height) << "kind " << kind;
            EXPECT_LT(place.height(), 360) << "kind " << kind;
            EXPECT_GT(place.screen.subviews.count, 0U) << "kind " << kind;
            EXPECT_TRUE(place.draws()) << "kind " << kind;
            View next = view;
            next.isEnabled = false;
            next.tooltip = "newer";
            next.opacity = 0.5;
            next.padding = {1, 2, 3, 4};
            [place.screen setRoot:next];
            EXPECT_GE(place.height(), height) << "kind " << kind;
            EXPECT_TRUE(place.draws()) << "kind " << kind;
        }
    }
    EXPECT_EQ(kinds.size(), std::variant_size_v<ViewNode>);
}

TEST_F(ScreenViewTest, whatIsNotVisibleTakesNoRoom) {
    const Place place;
    View hidden{.node = Text{.text = "hidden"}, .isVisible = false};
    const View shown{.node = Text{.text = "shown"}};
    [place.screen setRoot:column({hidden, shown})];
    const double alone = place.height();
    EXPECT_GT(alone, 0);
    hidden.isVisible = true;
    [place.screen setRoot:column({hidden, shown})];
    EXPECT_GT(place.height(), alone);
}

TEST_F(ScreenViewTest, textThatWrapsIsHigherInLessWidth) {
    const Place place;
    std::string words;
    for (int i = 0; i < 40; ++i)
        words += "words ";
    [place.screen setRoot:{.node = Text{.text = words}}];
    EXPECT_GT(place.height(120), place.height(480));
}

TEST_F(ScreenViewTest, aNewValueChangesTheControlThatIsThere) {
    const Place place;
    [place.screen setRoot:button("press", {})];
    NSButton* control = place.first<NSButton>();
    ASSERT_NE(control, nil);
    EXPECT_STREQ(control.title.UTF8String, "press");
    [place.screen setRoot:button("push", {})];
    EXPECT_EQ(place.first<NSButton>(), control);
    EXPECT_STREQ(control.title.UTF8String, "push");
}

TEST_F(ScreenViewTest, aPressRunsTheNewestAction) {
    const Place place;
    int old = 0;
    int pressed = 0;
    [place.screen setRoot:button("press", [&] { ++old; })];
    [place.screen setRoot:button("press", [&] { ++pressed; })];
    [place.first<NSButton>() performClick:nil];
    EXPECT_TRUE(pumpUntil([&] { return pressed == 1; }));
    EXPECT_EQ(old, 0);
}

class MainViewOnAMac : public MainViewFixture, public testing::WithParamInterface<bool> {
  protected:
    void SetUp() override {
        if (const auto reason = whyNoDesktop())
            GTEST_SKIP() << *reason;
    }
};

TEST_P(MainViewOnAMac, hasANaturalHeightBeforeItIsShown) {
    createAndAppear(GetParam());
    ORVScreenView* screen = [[ORVScreenView alloc] initInWindow:GetParam()];
    [screen setRoot:root];
    const double height = [screen naturalHeightForWidth:980];
    EXPECT_GT(height, 200);
    EXPECT_LT(height, 4000);
    EXPECT_GE([screen naturalHeightForWidth:600], height);
}

TEST_P(MainViewOnAMac, isDrawnInItsPlaceAndFollowsItsValues) {
    createAndAppear(GetParam());
    const Place place;
    [place.window setContentSize:NSMakeSize(980, 640)];
    place.screen.frame = place.window.contentView.bounds;
    [place.screen setRoot:root];
    EXPECT_TRUE(place.draws());
    const int before = renderings;
    flip("Show hidden icons beside the notch", !strip.enabled());
    ASSERT_GT(renderings, before);
    [place.screen setRoot:root];
    EXPECT_TRUE(place.draws());
    EXPECT_GT(place.height(980), 200);
}

INSTANTIATE_TEST_SUITE_P(PopoverAndWindow, MainViewOnAMac, testing::Bool());

} // namespace
} // namespace orrivane
