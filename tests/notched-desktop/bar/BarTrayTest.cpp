#include "BarStage.h"
#include "Desktop.h"
#include "TrayClient.h"
#include "WaitFor.h"

#include <gtest/gtest.h>

namespace orrivane::e2e {
namespace {

std::vector<int> widthsOf(const std::vector<PixelRect>& places) {
    std::vector<int> widths;
    for (const auto& place : places)
        widths.push_back(place.width);
    return widths;
}

void addThree(BarStage& stage) {
    stage.addIcon("one", 20);
    stage.addIcon("two", 34);
    stage.addIcon("three", 60);
}

TEST(BarTrayTest, iconsStandEdgeToEdgeWithTheSpacingAndAsHighAsTheBar) {
    BarStage stage;
    addThree(stage);
    const auto places = stage.placesOf(3);
    EXPECT_EQ(widthsOf(places), (std::vector{76, 50, 36}));
    EXPECT_EQ(places[0].right(), places[1].x);
    EXPECT_EQ(places[1].right(), places[2].x);
    EXPECT_EQ(places[2].right(), stage.tray().area.right());
    for (const auto& place : places) {
        EXPECT_EQ(place.y, 0);
        EXPECT_EQ(place.height, 37);
    }
    for (const auto& icon : stage.icons())
        EXPECT_EQ(icon.parent, stage.observer().trayOwner());
}

TEST(BarTrayTest, theSpacingIsInPointsAndTheIconsInPixels) {
    BarStage::Options options;
    options.scale = 2;
    options.width = 3024;
    options.height = 1964;
    options.cutouts = {{1327, 0, 370, 74}};
    BarStage stage(options);
    addThree(stage);
    const auto places = stage.placesOf(3);
    EXPECT_EQ(widthsOf(places), (std::vector{92, 66, 52}));
    EXPECT_EQ(places[0].height, 74);
}

TEST(BarTrayTest, aSpacingLowerByOneTakesOnePointOffEveryItem) {
    for (const int scale : {1, 2}) {
        BarStage::Options options;
        options.scale = scale;
        BarStage stage(options);
        addThree(stage);
        auto before = widthsOf(stage.placesOf(3));
        for (const int spacing : {15, 14, 1, 0, -1}) {
            stage.killBar();
            stage.startBar("NSStatusItemSpacing = " + std::to_string(spacing));
            for (auto& window : stage.windows())
                window.dock();
            const auto now = widthsOf(stage.placesOf(3));
            const std::vector natural{60, 34, 20};
            for (std::size_t i = 0; i < now.size(); ++i) {
                EXPECT_EQ(now[i], natural[i] + spacing * scale) << spacing;
                if (spacing == 15 || spacing == 14) {
                    EXPECT_EQ(before[i] - now[i], scale) << spacing;
                }
            }
            before = now;
        }
    }
}

TEST(BarTrayTest, anySpacingLeavesTheBarStanding) {
    for (const char* spacing : {"-9223372036854775808", "9223372036854775807", "-40", "100000"}) {
        BarStage::Options options;
        options.preferences = std::string("NSStatusItemSpacing = ") + spacing;
        BarStage stage(options);
        addThree(stage);
        for (const auto& place : stage.placesOf(3)) {
            EXPECT_GE(place.width, 1) << spacing;
            EXPECT_LE(place.width, 32767) << spacing;
        }
        EXPECT_TRUE(stage.bar().isRunning());
    }
}

TEST(BarTrayTest, anIconThatDeclaresNoWidthGetsTheOneItHas) {
    BarStage stage;
    stage.addIcon({"plain", 31, 20, false, false});
    stage.addIcon({"tiny", 3, 3, false, false});
    EXPECT_EQ(widthsOf(stage.placesOf(2)), (std::vector{16 + 16, 31 + 16}));
}

TEST(BarTrayTest, anIconMayDeclareOrAskForAnotherWidth) {
    BarStage stage;
    auto& declaring = stage.addIcon("declaring", 20);
    auto& asking = stage.addIcon({"asking", 20, 20, false, false});
    const auto become = [&](std::vector<int> expected) {
        return waitFor("the icons take their new widths",
                       [&] { return widthsOf(stage.placesOf(2)) == expected; });
    };
    declaring.declareWidth(48);
    EXPECT_TRUE(become({36, 64}));
    asking.askForWidth(50);
    EXPECT_TRUE(become({66, 64}));
    // What it has already it gets no more for; what it declares goes before what it asks for.
    asking.askForWidth(66);
    declaring.askForWidth(5);
    declaring.declareWidth(30);
    EXPECT_TRUE(become({66, 46}));
}

TEST(BarTrayTest, anIconThatPlacesItselfIsPutBack) {
    BarStage stage;
    auto& icon = stage.addIcon({"stubborn", 20, 20, true, true});
    const auto places = stage.placesOf(1);
    for (int width = 100; width < 110; ++width)
        icon.askForWidth(width);
    EXPECT_TRUE(waitFor("it is back in its place", [&] { return stage.placesOf(1) == places; }));
    stage.addIcon("next", 20);
    EXPECT_EQ(stage.placesOf(2)[1], places[0]);
}

TEST(BarTrayTest, anIconThatDoesNotWantToShowTakesNoRoom) {
    BarStage stage;
    stage.addIcon("left", 20);
    auto& shy = stage.addIcon("shy", 30);
    stage.addIcon("right", 40);
    const auto before = stage.placesOf(3);
    shy.wantToShow(false);
    const auto without = stage.placesOf(2);
    EXPECT_TRUE(waitFor("the others close up", [&] {
        const auto places = stage.placesOf(2);
        return places[0].right() == places[1].x;
    }));
    shy.wantToShow(true);
    EXPECT_TRUE(waitFor("it has its place again",
                        [&] { return stage.icons().size() == 3 && stage.placesOf(3) == before; }));
}

TEST(BarTrayTest, anIconThatGoesLeavesNoGap) {
    BarStage stage;
    stage.addIcon("stays", 20);
    auto& ends = stage.addIcon("ends", 30);
    auto& leaves = stage.addIcon("leaves", 40);
    auto& last = stage.addIcon("last", 25);
    ends.end();
    leaves.moveToRoot();
    EXPECT_TRUE(waitFor("the others close up", [&] {
        const auto icons = stage.icons();
        return icons.size() == 2 && icons[0].id == last.id() &&
               icons[0].area.right() == icons[1].area.x;
    }));
}

TEST(BarTrayTest, windowsThatCannotBeTakenChangeNothing) {
    BarStage stage;
    auto& icon = stage.addIcon("icon", 20);
    auto& observer = stage.observer();
    for (const xcb_window_t window : {xcb_window_t{0}, xcb_window_t{0x1ffffff}, observer.root(),
                                      stage.tray().id, stage.dock().id, icon.id()})
        icon.askToDock(window);
    stage.addIcon("after", 20);
    EXPECT_EQ(stage.placesOf(2).size(), 2U);
    EXPECT_TRUE(stage.bar().isRunning());
}

TEST(BarTrayTest, iconsOutliveTheBarAndKeepTheirOrderInTheNext) {
    BarStage stage;
    addThree(stage);
    stage.addIcon("two", 22);
    const auto before = stage.placesOf(4);
    const auto order = stage.order();
    for (int round = 0; round < 3; ++round) {
        stage.killBar();
        for (auto& window : stage.windows()) {
            const auto orphan = stage.observer().window(window.id());
            ASSERT_TRUE(orphan) << "the window went with the bar";
            EXPECT_EQ(orphan->parent, stage.observer().root());
        }
        stage.startBar();
        // Another order of arrival; two windows of one application keep theirs among each other.
        for (auto window = stage.windows().begin(); window != stage.windows().end(); ++window)
            if (window != stage.windows().begin())
                window->dock();
        stage.windows().front().dock();
        EXPECT_TRUE(waitFor("all are where they were", [&] {
            return stage.icons().size() == 4 && stage.order() == order &&
                   stage.placesOf(4) == before;
        }));
    }
}

class RealClient : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        if (const auto missing = missingPrograms({GetParam()}); !missing.empty())
            GTEST_SKIP() << missing;
    }
};

TEST_P(RealClient, docksOpensItsMenuAndIsBackAfterTheBarWasKilled) {
    BarStage stage;
    const TrayClient& kind = trayClient(GetParam());
    auto client = kind.start(stage.environment(kind.name), stage.log(kind.name));
    auto& observer = stage.observer();
    const auto icon = [&]() -> std::optional<WindowState> {
        for (const auto& window : stage.icons())
            if (window.className == kind.className && window.isViewable())
                return window;
        return std::nullopt;
    };
    const auto shown = waitForValue<WindowState>("its icon shows", icon);
    EXPECT_EQ(shown.parent, observer.trayOwner());
    EXPECT_TRUE(waitFor("it is as high as the bar", [&] {
        const auto now = icon();
        return now && now->area.height == 37 && now->area.width >= 32 && now->area.width <= 64;
    }));
    EXPECT_EQ(observer.leafAt(icon()->area.centre()), icon()->id);

    observer.click(icon()->area.centre(), kind.menuButton);
    const auto menuShows = [&] {
        for (const auto& popup : observer.popups())
            if (observer.pidOf(popup.id) == client.pid())
                return true;
        return false;
    };
    EXPECT_TRUE(waitFor("its menu opens", menuShows));
    observer.tapKey(keyEscape);
    EXPECT_TRUE(waitFor("its menu closes", [&] { return !menuShows(); }));
    observer.movePointer({300, 600});

    stage.killBar();
    stage.startBar();
    EXPECT_TRUE(waitFor("it is back", [&] { return icon().has_value(); })) << client.log();
    client.kill();
    EXPECT_TRUE(waitFor("its icon goes with it", [&] { return stage.icons().empty(); }));
}

INSTANTIATE_TEST_SUITE_P(Installed, RealClient,
                         testing::Values("volumeicon", "parcellite", "nm-tray"),
                         [](const auto& instance) {
                             std::string name = instance.param;
                             std::erase(name, '-');
                             return name;
                         });

} // namespace
} // namespace orrivane::e2e
