#include "ItemsStage.h"

namespace orrivane::e2e {
namespace {

using Look = ItemsStage;

constexpr std::uint32_t opaque = 0xff000000;

TEST_F(Look, anIconStandsOnTheBarsOwnColours) {
    startTray();
    startItem("wifi");
    const auto shown = icon();
    const auto corner = [&] {
        const auto image = observer_.imageOf(shown.id);
        return image ? image->at(0, 0) : 0;
    };
    EXPECT_TRUE(waitFor("it is drawn", [&] { return corner() == (opaque | background); }));
    observer_.setCardinals(observer_.trayOwner(), "_ORRIVANE_BAR_COLORS", {0x102030, 0xffffff});
    EXPECT_TRUE(waitFor("it follows the bar", [&] { return corner() == (opaque | 0x102030); }));
}

TEST_F(Look, anOpenMenuMarksItsIcon) {
    startTray();
    startItem("wifi");
    const auto shown = icon();
    const auto beside = [&] {
        const auto image = observer_.imageOf(shown.id);
        return image ? image->at(4, shown.area.height / 2) : 0;
    };
    ASSERT_TRUE(waitFor("it is drawn", [&] { return beside() == (opaque | background); }));
    openMenu(shown);
    EXPECT_TRUE(waitFor("it is marked", [&] { return beside() != (opaque | background); }));
    closeMenu();
    EXPECT_TRUE(waitFor("it is as before", [&] { return beside() == (opaque | background); }));
}

TEST_F(Look, theProcessorMonitorMovesAndTheBatteryStandsStill) {
    startTray();
    startItem("cpu");
    icons(1);
    startItem("battery");
    const auto both = icons(2);
    const auto& battery = both[0].className == "Battery" ? both[0] : both[1];
    const auto& processor = both[0].className == "Battery" ? both[1] : both[0];
    // It is drawn anew each time the tray moves it; what counts is that it then stands still.
    const auto before = waitForValue<Image>("the battery has come to rest", [&] {
        auto image = observer_.imageOf(battery.id);
        const bool rests = image && image->colours() > 4 &&
                           staysTrue(
                               "it rests", [&] { return observer_.imageOf(battery.id) == image; },
                               std::chrono::milliseconds(500));
        return rests ? image : std::nullopt;
    });
    for (int change = 0; change < 2; ++change) {
        const auto last = observer_.imageOf(processor.id);
        ASSERT_TRUE(
            waitFor("the graph moves", [&] { return observer_.imageOf(processor.id) != last; }));
    }
    EXPECT_EQ(observer_.imageOf(battery.id), before);
}

TEST_F(Look, aChoiceShowsInTheIcon) {
    startTray();
    startItem("volume");
    const auto shown = icon();
    ASSERT_TRUE(waitFor("it is drawn", [&] {
        const auto image = observer_.imageOf(shown.id);
        return image && image->colours() > 4;
    }));
    const auto before = observer_.imageOf(shown.id);
    openMenu(shown);
    chooseEntry(1);
    ASSERT_TRUE(isLogged({"volume: Mute"}));
    ASSERT_TRUE(waitFor("the menu closes", [&] { return observer_.popups().empty(); }));
    // A column that the highlight, too, has left as it was.
    const auto unmarked = [&] {
        const auto image = observer_.imageOf(shown.id);
        return image && image->at(4, shown.area.height / 2) == (opaque | background);
    };
    ASSERT_TRUE(waitFor("the highlight goes", unmarked));
    EXPECT_NE(observer_.imageOf(shown.id), before);
}

} // namespace
} // namespace orrivane::e2e
