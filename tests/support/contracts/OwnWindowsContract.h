#pragma once

#include <Orrivane/platform/OwnWindows.h>
#include <tests/support/contracts/Contract.h>

#include <algorithm>
#include <cstdint>

namespace orrivane {

/// The world also offers: `OwnWindows& ownWindows()`, `std::int64_t openMainViewWindow()` and
/// `std::int64_t openPopover()` (the number returned), `void closeMainViewWindow()`, and
/// `bool openForeignWindow(std::int64_t& number)` (of another program).
template <typename World>
class OwnWindowsContract : public Contract<World> {
  protected:
    bool lists(std::int64_t number) {
        return std::ranges::count(this->world.ownWindows().windowNumbers(), number) == 1;
    }
    bool mainViewIsVisible() { return this->world.ownWindows().mainViewWindowIsVisible(); }
};

TYPED_TEST_SUITE_P(OwnWindowsContract);

TYPED_TEST_P(OwnWindowsContract, anOpenWindowIsListedOnce) {
    const auto window = this->world.openMainViewWindow();
    const auto popover = this->world.openPopover();
    ASSERT_NE(window, popover);
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->lists(window); }));
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->lists(popover); }));
}

TYPED_TEST_P(OwnWindowsContract, anotherProgramsWindowIsNotListed) {
    std::int64_t number = 0;
    if (!this->world.openForeignWindow(number))
        GTEST_SKIP() << "no other program can open a window here";
    EXPECT_EQ(std::ranges::count(this->world.ownWindows().windowNumbers(), number), 0);
}

TYPED_TEST_P(OwnWindowsContract, theMainViewsWindowIsVisibleWhileItIsOpen) {
    EXPECT_FALSE(this->mainViewIsVisible());
    this->world.openMainViewWindow();
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->mainViewIsVisible(); }));
    this->world.closeMainViewWindow();
    EXPECT_TRUE(this->world.pumpUntil([&] { return !this->mainViewIsVisible(); }));
}

TYPED_TEST_P(OwnWindowsContract, thePopoverDoesNotCountAsAWindowOfTheMainView) {
    const auto popover = this->world.openPopover();
    ASSERT_TRUE(this->world.pumpUntil([&] { return this->lists(popover); }));
    EXPECT_FALSE(this->mainViewIsVisible());
}

REGISTER_TYPED_TEST_SUITE_P(OwnWindowsContract, anOpenWindowIsListedOnce,
                            anotherProgramsWindowIsNotListed,
                            theMainViewsWindowIsVisibleWhileItIsOpen,
                            thePopoverDoesNotCountAsAWindowOfTheMainView);

} // namespace orrivane
