#import "support/DesktopWorld.h"
#import "support/WatchedStatusBar.h"

#import <macos/appkit/Conversions.h>
#include <tests/support/contracts/StatusBarContract.h>

#include <Orrivane/MenuBarIcon.h>

namespace orrivane {
namespace {

struct SystemBarWorld : DesktopWorld<WatchedStatusBar> {
    StatusBar& statusBar() { return body(); }
    int itemCount() { return body().itemCount(); }
    // What the button does on a click, without the permission that a real one needs.
    bool click() {
        NSStatusBarButton* button = body().newest();
        [button performClick:nil];
        return button != nil;
    }
    std::string title() { return toString(body().newest().title); }
    std::optional<std::string> toolTip() {
        NSString* text = body().newest().toolTip;
        return text == nil ? std::nullopt : std::optional(toString(text));
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(System, StatusBarContract, SystemBarWorld);

TEST(AppKitStatusBar, showsTheProgramsIconAsATemplate) {
    if (const auto reason = whyNoDesktop())
        GTEST_SKIP() << *reason;
    WatchedStatusBar bar;
    const auto item = bar.createItem(NSVariableStatusItemLength);
    ASSERT_TRUE(item->hasButton());
    item->setImage(MenuBarIcon::image());
    EXPECT_TRUE([bar.newest().image isTemplate]);
    EXPECT_EQ(bar.newest().image.size.width, 22);
}

} // namespace
} // namespace orrivane
