#include <desktop/bar/ItemRow.h>

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

namespace orrivane::desktop {
namespace {

using Items = std::vector<PlacedItem>;

// Left to right: 3 at 940, 30 wide; 2 at 970, 20 wide; 1 at 990, 10 wide.
class ItemRowDragTest : public testing::Test {
  protected:
    ItemRowDragTest() {
        row.setRightEnd(1000);
        row.add(1, "one", 10);
        row.add(2, "two", 20);
        row.add(3, "three", 30);
    }

    const Items before{{3, 940, 30}, {2, 970, 20}, {1, 990, 10}};
    ItemRow row{0};
};

TEST_F(ItemRowDragTest, onlyAShownItemIsTakenHoldOf) {
    row.setShown(2, false);
    EXPECT_FALSE(row.beginDrag(2, 980));
    EXPECT_FALSE(row.beginDrag(7, 980));
    EXPECT_FALSE(row.beginDrag(0, 980));
    EXPECT_EQ(row.dragged(), 0U);
    EXPECT_TRUE(row.beginDrag(1, 995));
    EXPECT_EQ(row.dragged(), 1U);
}

TEST_F(ItemRowDragTest, theHeldItemFollowsThePointerByThePlaceItIsHeldAt) {
    row.beginDrag(1, 993);
    row.dragTo(985);
    EXPECT_EQ(row.placed(), (Items{{3, 940, 30}, {2, 970, 20}, {1, 982, 10}}));
}

TEST_F(ItemRowDragTest, anotherMakesRoomWhenItsMiddleIsPassedAndNotBefore) {
    row.beginDrag(1, 990);
    row.dragTo(975); // middle on middle
    EXPECT_EQ(row.placed(), (Items{{3, 940, 30}, {2, 970, 20}, {1, 975, 10}}));
    row.dragTo(974);
    EXPECT_EQ(row.placed(), (Items{{3, 940, 30}, {1, 974, 10}, {2, 980, 20}}));
}

TEST_F(ItemRowDragTest, droppedItTakesTheRoomTheOthersMade) {
    row.beginDrag(1, 990);
    row.dragTo(974);
    row.drop();
    EXPECT_EQ(row.dragged(), 0U);
    EXPECT_EQ(row.placed(), (Items{{3, 940, 30}, {1, 970, 10}, {2, 980, 20}}));
}

TEST_F(ItemRowDragTest, oneMotionMayPassSeveralInEitherDirection) {
    row.beginDrag(1, 990);
    row.dragTo(100);
    row.drop();
    EXPECT_EQ(row.placed(), (Items{{1, 940, 10}, {3, 950, 30}, {2, 980, 20}}));
    row.beginDrag(1, 945);
    row.dragTo(5000);
    row.drop();
    EXPECT_EQ(row.placed(), before);
}

TEST_F(ItemRowDragTest, givenUpEverythingStandsWhereItStood) {
    row.beginDrag(3, 950);
    row.dragTo(2000);
    EXPECT_NE(row.placed(), before);
    row.cancelDrag();
    EXPECT_EQ(row.dragged(), 0U);
    EXPECT_EQ(row.placed(), before);
}

TEST_F(ItemRowDragTest, whatCameDuringADragThatIsGivenUpStandsAtTheLeft) {
    row.beginDrag(3, 950);
    row.dragTo(2000);
    row.add(4, "four", 5);
    row.cancelDrag();
    EXPECT_EQ(row.placed(), (Items{{4, 935, 5}, {3, 940, 30}, {2, 970, 20}, {1, 990, 10}}));
}

TEST_F(ItemRowDragTest, aHeldItemThatGoesOrHidesIsHeldNoMore) {
    row.beginDrag(2, 975);
    row.remove(2);
    EXPECT_EQ(row.dragged(), 0U);
    row.beginDrag(1, 995);
    row.setShown(1, false);
    EXPECT_EQ(row.dragged(), 0U);
    row.dragTo(10);
    row.cancelDrag();
    EXPECT_EQ(row.placed(), (Items{{3, 970, 30}}));
}

TEST_F(ItemRowDragTest, anotherThatGoesMeanwhileChangesNothingForTheHeldOne) {
    row.beginDrag(1, 990);
    row.dragTo(974);
    row.remove(2);
    EXPECT_EQ(row.dragged(), 1U);
    row.drop();
    EXPECT_EQ(row.placed(), (Items{{3, 960, 30}, {1, 990, 10}}));
}

// Whatever is done to a row, its items stay edge to edge, none is lost, none is there twice.
TEST(ItemRowRandomTest, itemsStayPackedThroughDragsAndArrivals) {
    std::mt19937 random(20240621);
    const auto upTo = [&](int bound) {
        return static_cast<int>(random() % static_cast<unsigned>(bound));
    };
    for (int round = 0; round < 200; ++round) {
        ItemRow row(upTo(40) - 10);
        row.setRightEnd(1400);
        std::vector<std::uint32_t> present;
        std::uint32_t next = 1;
        for (int step = 0; step < 60; ++step) {
            const int what = upTo(6);
            if (what < 2 || present.empty()) {
                row.add(next, "app" + std::to_string(upTo(8)), 1 + upTo(60));
                present.push_back(next++);
            } else if (what == 2) {
                const auto gone = static_cast<std::size_t>(upTo(static_cast<int>(present.size())));
                row.remove(present[gone]);
                present.erase(present.begin() + static_cast<std::ptrdiff_t>(gone));
            } else if (what == 3) {
                row.beginDrag(
                    present[static_cast<std::size_t>(upTo(static_cast<int>(present.size())))],
                    upTo(1400));
            } else if (what == 4) {
                row.dragTo(upTo(1600) - 100);
            } else if (upTo(2) == 0) {
                row.drop();
            } else {
                row.cancelDrag();
            }
            auto resting = row;
            resting.drop();
            const auto placed = resting.placed();
            ASSERT_EQ(placed.size(), present.size());
            int end = 1400;
            std::vector<std::uint32_t> seen;
            for (auto item = placed.rbegin(); item != placed.rend(); ++item) {
                ASSERT_EQ(item->x + item->width, end);
                end = item->x;
                seen.push_back(item->id);
            }
            auto expected = present;
            std::ranges::sort(expected);
            std::ranges::sort(seen);
            ASSERT_EQ(seen, expected);
        }
    }
}

} // namespace
} // namespace orrivane::desktop
