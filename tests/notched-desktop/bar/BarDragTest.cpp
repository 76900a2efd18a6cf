#include "BarStage.h"
#include "WaitFor.h"

#include <gtest/gtest.h>

namespace orrivane::e2e {
namespace {

constexpr xcb_keysym_t keyCapsLock = 0xffe5;
constexpr xcb_keysym_t keyNumLock = 0xff7f;

class BarDragTest : public testing::Test {
  protected:
    BarDragTest() {
        for (const char* name : {"d", "c", "b", "a"})
            stage.addIcon(name, 34); // a b c d, each 50 wide
        before = stage.order();
        places = stage.placesOf(4);
    }
    ~BarDragTest() override {
        observer.button(1, false);
        observer.key(keySuper, false);
    }

    void press(const PixelPoint& place) {
        observer.key(keySuper, true);
        observer.movePointer(place);
        observer.button(1, true);
    }
    void release() {
        observer.button(1, false);
        observer.key(keySuper, false);
    }
    // The icons once the icon at `index` of the start is that far right of where it stood.
    testing::AssertionResult isMoved(std::size_t index, int by) {
        return waitFor("the item follows the pointer", [&] {
            const auto icon = observer.window(before[index]);
            return icon && icon->area.x == places[index].x + by;
        });
    }
    testing::AssertionResult orderBecomes(const std::vector<xcb_window_t>& order) {
        return waitFor("the items take their places",
                       [&] { return stage.order() == order && stage.placesOf(4) == places; });
    }
    int presses() {
        int sum = 0;
        for (auto& window : stage.windows())
            sum += window.presses();
        return sum;
    }

    BarStage stage;
    Observer& observer = stage.observer();
    std::vector<xcb_window_t> before;
    std::vector<PixelRect> places;
};

TEST_F(BarDragTest, withCommandAnItemFollowsThePointerAndTheOthersMakeRoom) {
    const auto start = places[0].centre();
    press(start);
    observer.movePointer({start.x + 20, start.y});
    EXPECT_TRUE(isMoved(0, 20));
    EXPECT_EQ(stage.order(), before);
    observer.movePointer({start.x + 51, start.y});
    EXPECT_TRUE(isMoved(0, 51));
    EXPECT_TRUE(waitFor("the neighbour makes room", [&] {
        const auto neighbour = observer.window(before[1]);
        return neighbour && neighbour->area == places[0];
    }));
    observer.movePointer({start.x + 120, start.y + 300});
    EXPECT_TRUE(isMoved(0, 120));
    release();
    EXPECT_TRUE(orderBecomes({before[1], before[2], before[0], before[3]}));
    EXPECT_EQ(presses(), 0);
}

TEST_F(BarDragTest, thePlacesHoldInTheNextBar) {
    const auto start = places[3].centre();
    press(start);
    observer.movePointer({places[0].x - 200, start.y});
    release();
    const std::vector moved{before[3], before[0], before[1], before[2]};
    ASSERT_TRUE(orderBecomes(moved));
    stage.killBar();
    stage.startBar();
    for (auto& window : stage.windows())
        window.dock();
    EXPECT_TRUE(waitFor("all are back where they were put",
                        [&] { return stage.icons().size() == 4 && stage.order() == moved; }));
}

TEST_F(BarDragTest, escapePutsEverythingBack) {
    const auto start = places[0].centre();
    press(start);
    observer.movePointer({start.x + 130, start.y});
    ASSERT_TRUE(isMoved(0, 130));
    observer.tapKey(keyEscape);
    EXPECT_TRUE(orderBecomes(before));
    observer.movePointer({start.x + 60, start.y});
    EXPECT_TRUE(staysTrue(
        "nothing moves any more", [&] { return stage.placesOf(4) == places; },
        std::chrono::milliseconds(150)));
    release();
    EXPECT_TRUE(orderBecomes(before));
}

TEST_F(BarDragTest, withoutCommandThePressReachesTheIcon) {
    observer.movePointer(places[2].centre());
    observer.button(1, true);
    EXPECT_TRUE(waitFor("the icon is pressed", [&] { return presses() == 1; }));
    observer.movePointer(places[0].centre());
    observer.button(1, false);
    EXPECT_EQ(stage.order(), before);
    EXPECT_EQ(stage.placesOf(4), places);
}

TEST_F(BarDragTest, otherButtonsWithCommandReachTheIconToo) {
    observer.key(keySuper, true);
    observer.click(places[1].centre(), 3);
    EXPECT_TRUE(waitFor("the icon is pressed", [&] { return presses() == 1; }));
}

TEST_F(BarDragTest, theLocksOfTheKeyboardMakeNoDifference) {
    observer.tapKey(keyCapsLock);
    observer.tapKey(keyNumLock);
    const auto start = places[1].centre();
    press(start);
    observer.movePointer({start.x - 60, start.y});
    release();
    EXPECT_TRUE(orderBecomes({before[1], before[0], before[2], before[3]}));
}

TEST_F(BarDragTest, commandMayBeReleasedBeforeTheButton) {
    const auto start = places[1].centre();
    press(start);
    observer.key(keySuper, false);
    observer.movePointer({start.x - 60, start.y});
    observer.button(1, false);
    EXPECT_TRUE(orderBecomes({before[1], before[0], before[2], before[3]}));
}

TEST_F(BarDragTest, aPressOnTheEmptyTrayMovesNothing) {
    const auto start = PixelPoint{places[0].x - 60, places[0].centre().y};
    press(start);
    observer.movePointer(places[3].centre());
    release();
    EXPECT_TRUE(orderBecomes(before));
}

TEST_F(BarDragTest, anItemThatEndsWhileItIsHeldLetsGoOfPointerAndKeyboard) {
    const auto start = places[0].centre();
    press(start);
    observer.movePointer({start.x + 30, start.y});
    ASSERT_TRUE(isMoved(0, 30));
    for (auto& window : stage.windows())
        if (window.id() == before[0])
            window.end();
    EXPECT_TRUE(waitFor("it is gone", [&] { return stage.icons().size() == 3; }));
    release();
    stage.windows().remove_if([&](const ClientWindow& window) { return window.id() == before[0]; });
    observer.click(places[2].centre());
    EXPECT_TRUE(waitFor("the next press reaches its icon", [&] { return presses() == 1; }));
}

TEST_F(BarDragTest, aBarThatIsKilledInTheMiddleHoldsNothingAfterwards) {
    const auto start = places[0].centre();
    press(start);
    observer.movePointer({start.x + 130, start.y});
    ASSERT_TRUE(isMoved(0, 130));
    stage.killBar();
    release();
    stage.startBar();
    for (auto& window : stage.windows())
        window.dock();
    EXPECT_TRUE(orderBecomes(before));
    observer.click(places[1].centre());
    EXPECT_TRUE(waitFor("a press reaches its icon", [&] { return presses() == 1; }));
}

} // namespace
} // namespace orrivane::e2e
