#pragma once

#include <Orrivane/platform/Popover.h>
#include <tests/support/contracts/Contract.h>

namespace orrivane {

/// The world also offers: `Popover& popover()`, `StatusItem& item()` (in the bar), `View root()`
/// (something to show), `Size contentSize()` (of the popover, in points) and
/// `bool clickElsewhere()`.
template <typename World>
class PopoverContract : public Contract<World> {
  protected:
    Popover& popover() { return this->world.popover(); }
    bool becomesShown(bool shown) {
        return this->world.pumpUntil([&] { return popover().isShown() == shown; });
    }
};

TYPED_TEST_SUITE_P(PopoverContract);

TYPED_TEST_P(PopoverContract, aNewPopoverIsNotShown) {
    EXPECT_FALSE(this->popover().isShown());
}

TYPED_TEST_P(PopoverContract, aSizeSetAfterTheRootTakesEffect) {
    this->popover().setRoot(this->world.root());
    this->popover().setContentSize({980, 640});
    this->popover().show(this->world.item());
    ASSERT_TRUE(this->becomesShown(true));
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->world.contentSize() == Size{980, 640}; }));
}

TYPED_TEST_P(PopoverContract, itIsShownAndClosedAgainAndAgain) {
    this->popover().setRoot(this->world.root());
    this->popover().setContentSize({400, 300});
    for (int round = 0; round < 2; ++round) {
        this->popover().show(this->world.item());
        ASSERT_TRUE(this->becomesShown(true));
        this->popover().performClose();
        ASSERT_TRUE(this->becomesShown(false));
    }
}

TYPED_TEST_P(PopoverContract, aClickElsewhereClosesIt) {
    this->popover().setRoot(this->world.root());
    this->popover().setContentSize({400, 300});
    this->popover().show(this->world.item());
    ASSERT_TRUE(this->becomesShown(true));
    if (!this->world.clickElsewhere())
        GTEST_SKIP() << "nobody can click elsewhere here";
    EXPECT_TRUE(this->becomesShown(false));
}

TYPED_TEST_P(PopoverContract, closingAPopoverThatIsNotShownIsHarmless) {
    this->popover().setRoot(this->world.root());
    this->popover().performClose();
    EXPECT_FALSE(this->popover().isShown());
}

REGISTER_TYPED_TEST_SUITE_P(PopoverContract, aNewPopoverIsNotShown, aSizeSetAfterTheRootTakesEffect,
                            itIsShownAndClosedAgainAndAgain, aClickElsewhereClosesIt,
                            closingAPopoverThatIsNotShownIsHarmless);

} // namespace orrivane
