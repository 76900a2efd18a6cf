#include "BarStage.h"
#include "WaitFor.h"

#include <gtest/gtest.h>

namespace orrivane::e2e {
namespace {

TEST(BarLimitsTest, sixtyItemsGoOnUnderTheNotchAndTheMenusAndOffTheScreen) {
    BarStage stage;
    for (int i = 0; i < 60; ++i) {
        auto& window = stage.windows().emplace_back(
            stage.display(),
            ClientWindow::Options{"app" + std::to_string(i), 18 + i % 43, 20, true, false});
        window.dock();
    }
    const auto places = stage.placesOf(60);
    for (std::size_t i = 1; i < places.size(); ++i)
        EXPECT_EQ(places[i - 1].right(), places[i].x);
    EXPECT_EQ(places.back().right(), stage.tray().area.right());
    EXPECT_LT(places.front().x, 0);
    int total = 0;
    for (int i = 0; i < 60; ++i)
        total += 18 + i % 43 + 16;
    EXPECT_EQ(places.back().right() - places.front().x, total);

    auto& observer = stage.observer();
    const auto notch = observer.cutouts().front();
    EXPECT_EQ(observer.imageOfRoot({notch.x + 20, 2, notch.width - 40, 20}).colours(), 1U);
    // An icon behind the notch can be pressed where it is.
    const auto leaf = observer.leafAt(notch.centre());
    EXPECT_EQ(observer.window(leaf)->parent, stage.tray().id);
    // Those behind the menus are out of reach: the menus lie above them.
    const auto titles = stage.titles();
    EXPECT_EQ(observer.leafAt(titles.area.centre()), titles.id);
}

TEST(BarLimitsTest, anItemWiderThanTheRoomEndsAtTheRightAndPushesTheOthersOut) {
    BarStage stage;
    auto& wide = stage.addIcon("wide", 5000);
    stage.addIcon("pushed", 20);
    const auto places = stage.placesOf(2);
    EXPECT_EQ(places[1].width, 5016);
    EXPECT_EQ(places[1].right(), stage.tray().area.right());
    EXPECT_EQ(places[0].right(), places[1].x);
    wide.end();
    EXPECT_TRUE(waitFor("the other has room again", [&] {
        const auto icons = stage.icons();
        return icons.size() == 1 && icons[0].area.right() == stage.tray().area.right();
    }));
}

TEST(BarLimitsTest, withoutAnItemTheTrayIsEmptyAndReady) {
    BarStage stage;
    EXPECT_TRUE(stage.icons().empty());
    auto& observer = stage.observer();
    const auto tray = stage.tray();
    EXPECT_EQ(observer.imageOfRoot({900, 2, tray.area.right() - 900, 30}).colours(), 1U);
    stage.addIcon("first", 20);
    stage.windows().clear();
    EXPECT_TRUE(waitFor("the tray is empty again", [&] { return stage.icons().empty(); }));
}

TEST(BarLimitsTest, aNotchWiderThanHalfTheBarLeavesRoomForNoMenuThatDoesNotFit) {
    BarStage::Options options;
    options.cutouts = {{100, 0, 1000, 37}};
    BarStage stage(options);
    stage.addIcon("hidden", 500);
    stage.addIcon("behind", 20);
    auto& observer = stage.observer();
    EXPECT_LE(stage.titles().area.right(), 100);
    const auto places = stage.placesOf(2);
    EXPECT_TRUE(options.cutouts.front().contains(places[0]));
    EXPECT_EQ(observer.leafAt(places[0].centre()), stage.icons()[0].id);
}

TEST(BarLimitsTest, aNotchThatIsTheWholeBarHidesItAll) {
    BarStage::Options options;
    options.cutouts = {{0, 0, 1512, 37}};
    BarStage stage(options);
    auto& icon = stage.addIcon("hidden", 20);
    auto& observer = stage.observer();
    ASSERT_TRUE(waitFor("the notch shows", [&] { return stage.notch().has_value(); }));
    EXPECT_TRUE(waitFor("nothing of the bar shows",
                        [&] { return observer.imageOfRoot({20, 0, 1472, 20}).colours() == 1; }));
    observer.click(stage.placesOf(1).front().centre());
    EXPECT_TRUE(waitFor("the icon is pressed all the same", [&] { return icon.presses() == 1; }));
}

} // namespace
} // namespace orrivane::e2e
