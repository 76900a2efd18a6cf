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

} // namespace
} // namespace orrivane
