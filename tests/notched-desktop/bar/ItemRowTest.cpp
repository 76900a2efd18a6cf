#include <desktop/bar/ItemRow.h>

#include <gtest/gtest.h>

namespace orrivane::desktop {
namespace {

using Items = std::vector<PlacedItem>;

ItemRow rowOf(std::int64_t spacing, const std::vector<int>& widths, int rightEnd = 1000) {
    ItemRow row(spacing);
    row.setRightEnd(rightEnd);
    std::uint32_t id = 0;
    for (const int width : widths) {
        ++id;
        row.add(id, "app" + std::to_string(id), width);
    }
    return row;
}

TEST(ItemRowTest, anEmptyRowPlacesNothing) {
    EXPECT_EQ(rowOf(16, {}).placed(), Items{});
}

TEST(ItemRowTest, itemsStandEdgeToEdgeFromTheRightAndNewOnesComeLeft) {
    EXPECT_EQ(rowOf(16, {20, 34, 18}).placed(), (Items{{3, 880, 34}, {2, 914, 50}, {1, 964, 36}}));
}

TEST(ItemRowTest, aSpacingLowerByOneTakesOneFromEveryItem) {
    for (std::int64_t spacing = 30; spacing > -10; --spacing) {
        const auto wider = rowOf(spacing, {20, 34, 18}).placed();
        const auto narrower = rowOf(spacing - 1, {20, 34, 18}).placed();
        for (std::size_t i = 0; i < wider.size(); ++i)
            EXPECT_EQ(narrower[i].width, wider[i].width - 1) << "spacing " << spacing;
        EXPECT_EQ(narrower.front().x, wider.front().x + 3);
    }
}

TEST(ItemRowTest, noItemIsNarrowerThanAPixelOrWiderThanAWindowCanBe) {
    EXPECT_EQ(rowOf(-1000, {20}).placed(), (Items{{1, 999, 1}}));
    EXPECT_EQ(rowOf(INT64_MIN, {20}).placed(), (Items{{1, 999, 1}}));
    EXPECT_EQ(rowOf(INT64_MAX, {20}).placed().front().width, ItemRow::widest);
    EXPECT_EQ(rowOf(0, {INT32_MAX}).placed().front().width, ItemRow::widest);
}

TEST(ItemRowTest, itemsWithoutRoomGoOnLeftOfTheTray) {
    EXPECT_EQ(rowOf(0, {60, 60, 60}, 100).placed(),
              (Items{{3, -80, 60}, {2, -20, 60}, {1, 40, 60}}));
}

TEST(ItemRowTest, placesEndWhereTheServerCountsNoFurther) {
    const auto placed = rowOf(INT32_MAX, {20, 20, 20}, 100).placed();
    ASSERT_EQ(placed.size(), 3U);
    EXPECT_EQ(placed[0].x, ItemRow::leftmost);
    EXPECT_EQ(placed[1].x, ItemRow::leftmost);
    EXPECT_EQ(placed[2].x, 100 - ItemRow::widest);
}

TEST(ItemRowTest, anItemThatIsNotShownTakesNoRoomAndKeepsItsPlace) {
    auto row = rowOf(0, {10, 20, 30});
    row.setShown(2, false);
    EXPECT_EQ(row.placed(), (Items{{3, 960, 30}, {1, 990, 10}}));
    row.setShown(2, true);
    EXPECT_EQ(row.placed(), (Items{{3, 940, 30}, {2, 970, 20}, {1, 990, 10}}));
}

TEST(ItemRowTest, anItemThatComesBackStandsWhereItStood) {
    auto row = rowOf(0, {10, 20, 30});
    row.remove(2);
    EXPECT_FALSE(row.contains(2));
    EXPECT_EQ(row.placed(), (Items{{3, 960, 30}, {1, 990, 10}}));
    row.add(9, "app2", 25);
    EXPECT_EQ(row.placed(), (Items{{3, 935, 30}, {9, 965, 25}, {1, 990, 10}}));
}

TEST(ItemRowTest, aKeptOrderHoldsWhicheverItemComesFirst) {
    ItemRow row(0);
    row.setRightEnd(100);
    row.remember({{"mail", 0}, {"twins", 0}, {"twins", 1}, {"wifi", 0}});
    row.add(1, "wifi", 10);
    row.add(2, "twins", 10);
    row.add(3, "new", 10);
    row.add(4, "mail", 10);
    row.add(5, "twins", 10);
    EXPECT_EQ(row.placed(),
              (Items{{3, 50, 10}, {4, 60, 10}, {2, 70, 10}, {5, 80, 10}, {1, 90, 10}}));
    EXPECT_EQ(row.order(), (std::vector<ItemKey>{
                               {"new", 0}, {"mail", 0}, {"twins", 0}, {"twins", 1}, {"wifi", 0}}));
}

TEST(ItemRowTest, theSecondWindowOfAnApplicationTakesTheFirstFreeNumber) {
    ItemRow row(0);
    row.setRightEnd(100);
    row.add(1, "", 10);
    row.add(2, "", 10);
    row.remove(1);
    row.add(3, "", 10);
    EXPECT_EQ(row.placed(), (Items{{2, 80, 10}, {3, 90, 10}}));
}

TEST(ItemRowTest, anItemAddedTwiceIsThereOnce) {
    auto row = rowOf(0, {10});
    row.add(1, "app1", 30);
    EXPECT_EQ(row.placed(), (Items{{1, 970, 30}}));
}

TEST(ItemRowTest, itemsThatAreUnknownChangeNothing) {
    auto row = rowOf(0, {10});
    row.remove(7);
    row.setShown(7, false);
    row.setNaturalWidth(7, 50);
    EXPECT_FALSE(row.contains(7));
    EXPECT_FALSE(row.contains(0));
    EXPECT_EQ(row.placed(), (Items{{1, 990, 10}}));
}

TEST(ItemRowTest, anItemThatGrowsPushesThoseLeftOfIt) {
    auto row = rowOf(4, {10, 10});
    row.setNaturalWidth(1, 30);
    EXPECT_EQ(row.placed(), (Items{{2, 952, 14}, {1, 966, 34}}));
}

TEST(ItemRowTest, placesOfAbsentItemsAreGivenUpFirst) {
    ItemRow row(0);
    row.add(1, "here", 10);
    for (std::size_t i = 0; i < ItemRow::mostRemembered + 50; ++i) {
        row.add(2, "passing " + std::to_string(i), 10);
        row.remove(2);
    }
    EXPECT_LE(row.order().size(), ItemRow::mostRemembered);
    EXPECT_TRUE(row.contains(1));
}

} // namespace
} // namespace orrivane::desktop
