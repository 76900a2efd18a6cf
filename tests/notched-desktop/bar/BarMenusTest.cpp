#include "BarStage.h"
#include "Desktop.h"
#include "WaitFor.h"

#include <gtest/gtest.h>

namespace orrivane::e2e {
namespace {

constexpr xcb_keysym_t keyRight = 0xff53;
constexpr auto choice = "_ORRIVANE_APP_MENU_CHOICE";

class BarMenusTest : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = missingPrograms({"openbox"}); !missing.empty())
            GTEST_SKIP() << missing;
        BarStage::Options options;
        options.windowManager = true;
        stage.emplace(options);
    }

    Observer& observer() { return stage->observer(); }

    Image titles() { return observer().imageOfRoot(stage->titles().area); }

    // Returns when its menus are the bar's.
    ClientWindow& addWindow(const std::string& name, const std::string& menus) {
        const Image before = titles();
        auto& window = stage->windows().emplace_back(
            stage->display(), ClientWindow::Options{name, 300, 200, false, false});
        if (!menus.empty())
            window.publishMenus(menus);
        window.map();
        EXPECT_TRUE(waitFor(name + " is active", [&] {
            return observer().activeWindow() == std::optional(window.id());
        }));
        EXPECT_TRUE(waitFor("the bar shows its menus", [&] { return !(titles() == before); }));
        return window;
    }

    std::vector<WindowState> openMenus() {
        auto popups = observer().popups();
        std::erase_if(popups, [&](const WindowState& popup) {
            return popup.className != "ControlCenter" || popup.area == observer().cutouts().front();
        });
        return popups;
    }

    // Where the selected entry begins, pixels from the top of the screen; absent without one. A
    // menu is mapped before it has the keyboard and painted after it.
    std::optional<int> selection() {
        constexpr std::uint32_t accent = 0xff2f6fed; // of the light theme
        const auto menus = openMenus();
        if (menus.size() != 1)
            return std::nullopt;
        const Image look = observer().imageOfRoot(menus.front().area);
        const auto found = std::ranges::find(look.pixels, accent);
        if (found == look.pixels.end())
            return std::nullopt;
        return menus.front().area.y +
               static_cast<int>(std::distance(look.pixels.begin(), found) / look.width);
    }

    void openFirstMenu() {
        const Image before = observer().imageOfRoot();
        const auto place = stage->titles().area;
        observer().click({place.x + 20, place.centre().y});
        ASSERT_TRUE(waitFor("a menu is painted", [&] {
            const auto menus = openMenus();
            return menus.size() == 1 &&
                   !(observer().imageOfRoot(menus.front().area) == before.crop(menus.front().area));
        }));
    }

    void openNextMenu() {
        const auto before = openMenus();
        observer().tapKey(keyRight);
        ASSERT_TRUE(waitFor("the next menu opens with its first entry selected",
                            [&] { return openMenus() != before && selection().has_value(); }));
    }

    void selectNext() {
        const auto before = selection();
        observer().tapKey(keyDown);
        ASSERT_TRUE(waitFor("the selection moves", [&] {
            const auto now = selection();
            return now && now != before;
        }));
    }

    // Opens the menu of the name, goes from it `right` menus on and takes the `nth` entry,
    // separators left out.
    void choose(int right, int nth) {
        openFirstMenu();
        for (int i = 0; i < right; ++i)
            openNextMenu();
        for (int i = right > 0 ? 1 : 0; i < nth; ++i)
            selectNext();
        observer().tapKey(keyReturn);
        EXPECT_TRUE(waitFor("the menu closes", [&] { return openMenus().empty(); }));
    }

    testing::AssertionResult widthBecomes(const std::function<bool(int)>& right) {
        return waitFor("the titles take another room",
                       [&] { return right(stage->titles().area.width); });
    }

    std::optional<BarStage> stage;
};

TEST_F(BarMenusTest, theMenusOfTheActiveApplicationTakeTheRoomTheyNeed) {
    const int desktop = stage->titles().area.width;
    EXPECT_GT(desktop, 100);
    auto& brief = addWindow("Brief", "File\tOpen");
    EXPECT_TRUE(widthBecomes([&](int width) { return width < desktop; }));
    const int small = stage->titles().area.width;
    addWindow("Elaborate", "File\tOpen\nArrangement\tLeft\nTransformation\tTurn\nHelp\tAbout");
    EXPECT_TRUE(widthBecomes([&](int width) { return width > small + 100; }));
    const int large = stage->titles().area.width;
    brief.publishMenus("File\tOpen\nEdit\tUndo"); // not in front: nothing to see
    EXPECT_EQ(stage->titles().area.width, large);
    stage->windows().pop_back();
    EXPECT_TRUE(widthBecomes([&](int width) { return width > small && width < large; }));
    stage->windows().clear();
    EXPECT_TRUE(widthBecomes([&](int width) { return width == desktop; }));
}

TEST_F(BarMenusTest, menusThatChangeShowAtOnce) {
    auto& window = addWindow("Painter", "File\tOpen");
    const int before = stage->titles().area.width;
    window.publishMenus("File\tOpen\nLayers\tAdd\nFilters\tBlur");
    EXPECT_TRUE(widthBecomes([&](int width) { return width > before + 60; }));
}

TEST_F(BarMenusTest, aChoiceIsToldToTheApplicationByItsNumbers) {
    auto& window = addWindow("Painter", "File\tOpen\t-\tClose\nEdit\tUndo\tRedo");
    using Messages = std::vector<std::array<std::uint32_t, 5>>;
    const auto told = [&](const Messages& expected) {
        return waitFor("the choice arrives", [&] { return window.messages(choice) == expected; });
    };
    choose(2, 2);
    EXPECT_TRUE(told({{1, 1, 0, 0, 0}}));
    choose(1, 2); // the separator counts
    EXPECT_TRUE(told({{1, 1, 0, 0, 0}, {0, 2, 0, 0, 0}}));
    choose(0, 1);
    EXPECT_TRUE(told({{1, 1, 0, 0, 0}, {0, 2, 0, 0, 0}, {0xffffffff, 0, 0, 0, 0}}));
    EXPECT_EQ(observer().activeWindow(), std::optional(window.id()));
}

TEST_F(BarMenusTest, anApplicationWithoutMenusIsAskedToClose) {
    auto& window = addWindow("Plain", "");
    choose(0, 1);
    EXPECT_TRUE(waitFor("it is asked to close",
                        [&] { return window.messages("WM_PROTOCOLS").size() == 1; }));
}

TEST_F(BarMenusTest, escapeClosesAMenuAndChoosesNothing) {
    auto& window = addWindow("Painter", "File\tOpen");
    openFirstMenu();
    EXPECT_GE(openMenus().front().area.y, 37);
    observer().tapKey(keyEscape);
    EXPECT_TRUE(waitFor("the menu closes", [&] { return openMenus().empty(); }));
    EXPECT_TRUE(window.messages(choice).empty());
}

TEST_F(BarMenusTest, menusThatDoNotFitLeftOfTheNotchStayLeftOfIt) {
    std::string menus = "First\tEntry";
    for (int i = 0; i < 30; ++i)
        menus += "\nA rather long title\tEntry";
    addWindow("Endless", menus);
    EXPECT_TRUE(widthBecomes([](int width) { return width > 500; }));
    EXPECT_LE(stage->titles().area.right(), observer().cutouts().front().x);
}

TEST_F(BarMenusTest, menusOfAnyTextDoNoHarm) {
    std::string noise;
    for (int i = 1; i < 3000; ++i)
        noise += static_cast<char>(i % 255 + 1);
    addWindow("Noise", noise);
    auto& after = addWindow("After", "File\tOpen");
    choose(1, 1);
    EXPECT_TRUE(waitFor("the choice arrives", [&] { return after.messages(choice).size() == 1; }));
    EXPECT_TRUE(stage->bar().isRunning());
}

TEST_F(BarMenusTest, theDesktopsOwnMenusDoWhatTheySay) {
    const auto wallpaper = [&] { return observer().imageOfRoot({0, 300, 400, 300}); };
    ASSERT_TRUE(waitFor("the wallpaper is up", [&] { return wallpaper().colours() > 50; }));
    const auto before = wallpaper();
    choose(2, 2); // View, Next Wallpaper
    EXPECT_TRUE(waitFor("another wallpaper shows", [&] { return !(wallpaper() == before); }));
    choose(0, 1); // Restart Menu Bar
    EXPECT_EQ(stage->bar().wait(defaultBound), (ExitStatus{0, std::nullopt}));
}

} // namespace
} // namespace orrivane::e2e
