#pragma once

#include <Orrivane/platform/WindowList.h>
#include <tests/support/contracts/Contract.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

namespace orrivane {

/// The world also offers: `WindowList& list()`, `std::uint32_t addStatusItem()` and
/// `std::uint32_t addOrdinaryWindow()` (both on screen, the number returned), `Rect
/// frameOf(number)` (as another program measures it, global top-left-origin points), `bool
/// hide(number)` (the window stays, off screen) and `void remove(number)`. Changes may take the
/// loop to arrive.
template <typename World>
class WindowListContract : public Contract<World> {
  protected:
    using Entries = std::vector<WindowListEntry>;

    static std::optional<WindowListEntry> find(const Entries& entries, std::uint32_t number) {
        const auto found =
            std::ranges::find(entries, std::optional(number), &WindowListEntry::number);
        if (found == entries.end())
            return std::nullopt;
        return *found;
    }
    std::optional<WindowListEntry> inAll(std::uint32_t number) {
        return find(this->world.list().allWindows(), number);
    }
    std::optional<WindowListEntry> inOnscreen(std::uint32_t number) {
        return find(this->world.list().onscreenWindows(), number);
    }
    bool appears(std::uint32_t number) {
        return this->world.pumpUntil([&] { return inAll(number) && inOnscreen(number); });
    }

    static constexpr std::int64_t statusItemLayer = 25;
};

TYPED_TEST_SUITE_P(WindowListContract);

TYPED_TEST_P(WindowListContract, aStatusItemIsInBothListsWithItsLayerAndItsPlaceOnTheBar) {
    const auto item = this->world.addStatusItem();
    ASSERT_TRUE(this->appears(item));
    for (const auto& entry : {this->inAll(item), this->inOnscreen(item)}) {
        ASSERT_TRUE(entry);
        EXPECT_EQ(entry->layer, this->statusItemLayer);
        ASSERT_TRUE(entry->bounds);
        EXPECT_EQ(entry->bounds->minX(), this->world.frameOf(item).minX());
        EXPECT_EQ(entry->bounds->width(), this->world.frameOf(item).width());
    }
    EXPECT_NE(this->inOnscreen(item)->onscreen, std::optional(false));
}

TYPED_TEST_P(WindowListContract, nothingElseHasTheLayerOfStatusItems) {
    const auto window = this->world.addOrdinaryWindow();
    ASSERT_TRUE(this->appears(window));
    EXPECT_NE(this->inAll(window)->layer, this->statusItemLayer);
    EXPECT_NE(this->inOnscreen(window)->layer, this->statusItemLayer);
}

TYPED_TEST_P(WindowListContract, aStatusItemOffScreenIsOnlyInTheFullList) {
    const auto item = this->world.addStatusItem();
    ASSERT_TRUE(this->appears(item));
    if (!this->world.hide(item))
        GTEST_SKIP() << "a status item cannot be put off screen here";
    EXPECT_TRUE(this->world.pumpUntil([&] { return !this->inOnscreen(item); }));
    EXPECT_TRUE(this->inAll(item));
}

TYPED_TEST_P(WindowListContract, aStatusItemThatIsGoneIsInNeitherList) {
    const auto item = this->world.addStatusItem();
    ASSERT_TRUE(this->appears(item));
    this->world.remove(item);
    EXPECT_TRUE(
        this->world.pumpUntil([&] { return !this->inAll(item) && !this->inOnscreen(item); }));
}

TYPED_TEST_P(WindowListContract, whatIsOnScreenIsInTheFullListToo) {
    ASSERT_TRUE(this->appears(this->world.addStatusItem()));
    for (const auto& entry : this->world.list().onscreenWindows()) {
        ASSERT_TRUE(entry.number);
        EXPECT_TRUE(this->inAll(*entry.number)) << *entry.number;
    }
}

TYPED_TEST_P(WindowListContract, severalStatusItemsHaveNumbersOfTheirOwn) {
    const auto first = this->world.addStatusItem();
    const auto second = this->world.addStatusItem();
    ASSERT_NE(first, second);
    ASSERT_TRUE(this->appears(first));
    ASSERT_TRUE(this->appears(second));
    EXPECT_NE(this->inAll(first)->bounds, this->inAll(second)->bounds);
}

REGISTER_TYPED_TEST_SUITE_P(WindowListContract,
                            aStatusItemIsInBothListsWithItsLayerAndItsPlaceOnTheBar,
                            nothingElseHasTheLayerOfStatusItems,
                            aStatusItemOffScreenIsOnlyInTheFullList,
                            aStatusItemThatIsGoneIsInNeitherList, whatIsOnScreenIsInTheFullListToo,
                            severalStatusItemsHaveNumbersOfTheirOwn);

} // namespace orrivane
