#pragma once

#include <Orrivane/platform/StatusBar.h>
#include <tests/support/contracts/Contract.h>

#include <memory>
#include <string>

namespace orrivane {

/// The world also offers: `StatusBar& statusBar()`, `int itemCount()` (items of this program in
/// the bar), `bool click()` (the user clicks the newest one), `std::string title()` and
/// `std::optional<std::string> toolTip()` of the newest one as the bar shows them.
template <typename World>
class StatusBarContract : public Contract<World> {
  protected:
    static constexpr double asWideAsItsContent = -1;

    std::unique_ptr<StatusItem> createItem() {
        auto item = this->world.statusBar().createItem(asWideAsItsContent);
        if (item)
            item->setImage(Drawing{{18, 18}, {RoundedRectangle{.rect = {{2, 2}, {14, 14}}}}});
        return item;
    }
    bool hasItems(int count) {
        return this->world.pumpUntil([&] { return this->world.itemCount() == count; });
    }
};

TYPED_TEST_SUITE_P(StatusBarContract);

TYPED_TEST_P(StatusBarContract, anItemIsInTheBarUntilItIsDestroyed) {
    auto item = this->createItem();
    ASSERT_TRUE(item);
    EXPECT_TRUE(this->hasItems(1));
    item.reset();
    EXPECT_TRUE(this->hasItems(0));
}

TYPED_TEST_P(StatusBarContract, aClickRunsTheActionThatWasSetLast) {
    const auto item = this->createItem();
    ASSERT_TRUE(item);
    if (!item->hasButton())
        GTEST_SKIP() << "this bar's items have no button";
    ASSERT_TRUE(this->hasItems(1));
    int first = 0;
    int second = 0;
    item->setAction([&] { ++first; });
    item->setAction([&] { ++second; });
    ASSERT_TRUE(this->world.click());
    EXPECT_TRUE(this->world.pumpUntil([&] { return second == 1; }));
    EXPECT_EQ(first, 0);
}

TYPED_TEST_P(StatusBarContract, anActionMayReplaceItself) {
    const auto item = this->createItem();
    ASSERT_TRUE(item);
    if (!item->hasButton())
        GTEST_SKIP() << "this bar's items have no button";
    ASSERT_TRUE(this->hasItems(1));
    std::string last;
    item->setAction([&] {
        item->setAction([&] { last = "second"; });
        last = "first";
    });
    ASSERT_TRUE(this->world.click());
    EXPECT_TRUE(this->world.pumpUntil([&] { return last == "first"; }));
    ASSERT_TRUE(this->world.click());
    EXPECT_TRUE(this->world.pumpUntil([&] { return last == "second"; }));
}

TYPED_TEST_P(StatusBarContract, titleAndToolTipComeAndGo) {
    const auto item = this->createItem();
    ASSERT_TRUE(item);
    ASSERT_TRUE(this->hasItems(1));
    constexpr int imageLeading = 7;
    item->setImagePosition(imageLeading);
    item->setTitle(" ●");
    item->setToolTip("Update available");
    EXPECT_TRUE(this->world.pumpUntil([&] {
        return this->world.title() == " ●" && this->world.toolTip() == "Update available";
    }));
    item->setTitle("");
    item->setToolTip(std::nullopt);
    EXPECT_TRUE(this->world.pumpUntil(
        [&] { return this->world.title().empty() && !this->world.toolTip(); }));
}

REGISTER_TYPED_TEST_SUITE_P(StatusBarContract, anItemIsInTheBarUntilItIsDestroyed,
                            aClickRunsTheActionThatWasSetLast, anActionMayReplaceItself,
                            titleAndToolTipComeAndGo);

} // namespace orrivane
