#include "ItemsStage.h"
#include "Kinds.h"

#include <algorithm>

namespace orrivane::e2e {
namespace {

using Menus = ItemsStage;

class EveryMenu : public ItemsStage, public testing::WithParamInterface<ExpectedKind> {};

TEST_P(EveryMenu, opensOnAPressAndLogsTheChoice) {
    startTray();
    auto& process = startItem(GetParam().id);
    const auto menu = openMenu(icon());
    EXPECT_EQ(observer_.pidOf(menu.id), process.pid());
    EXPECT_TRUE(menu.overrideRedirect);
    EXPECT_TRUE(observer_.rootArea().contains(menu.area)) << menu.area;
    EXPECT_GT(menu.area.height, 50) << menu.area;
    chooseEntry(1);
    EXPECT_TRUE(isLogged({GetParam().id + ": " + GetParam().firstEntry}));
    EXPECT_TRUE(waitFor("the menu closes", [&] { return observer_.popups().empty(); }));
}

INSTANTIATE_TEST_SUITE_P(Menus, EveryMenu, testing::ValuesIn(expectedKinds()),
                         [](const auto& instance) {
                             std::string name = instance.param.id;
                             std::erase(name, '-');
                             return name;
                         });

TEST_F(Menus, hangsUnderTheLeftEndOfTheHighlight) {
    startTray();
    // Enough of them that the screen's edge leaves room for the leftmost one's menu.
    for (const char* kind : {"clock-world", "battery", "timer", "weather"})
        startItem(kind);
    const auto left = icons(4).front();
    const auto opened = openMenu(left);
    constexpr int selectionPadding = 14;
    constexpr int shadow = 14;
    const int natural = left.area.width - spacing;
    const int highlight = std::min(left.area.width, natural + selectionPadding);
    EXPECT_EQ(opened.area.x + shadow, left.area.x + (left.area.width - highlight) / 2);
    EXPECT_EQ(opened.area.y, left.area.bottom() + 3);
}

TEST_F(Menus, theOtherButtonOpensItToo) {
    startTray();
    startItem("mail");
    openMenu(icon(), 3);
    closeMenu();
    EXPECT_TRUE(choices().empty());
}

TEST_F(Menus, aClickOnAnEntryChoosesIt) {
    startTray();
    startItem("mail");
    const auto opened = openMenu(icon());
    // Below a label and a separator.
    observer_.click({opened.area.centre().x, opened.area.y + 5 + 24 + 11 + 12});
    EXPECT_TRUE(isLogged({"mail: New Message"}));
}

TEST_F(Menus, aClickBesideThePanelClosesIt) {
    startTray();
    startItem("mail");
    const auto opened = openMenu(icon());
    observer_.click({opened.area.x + 3, opened.area.y + 60});
    EXPECT_TRUE(waitFor("the menu closes", [&] { return observer_.popups().empty(); }));
    EXPECT_TRUE(choices().empty());
}

TEST_F(Menus, aSecondPressOnTheIconClosesIt) {
    startTray();
    startItem("mail");
    const auto place = icon().area.centre();
    observer_.click(place);
    menu();
    observer_.click(place);
    ASSERT_TRUE(waitFor("the menu closes", [&] { return observer_.popups().empty(); }));
    EXPECT_TRUE(staysTrue(
        "it stays closed", [&] { return observer_.popups().empty(); },
        std::chrono::milliseconds(200)));
}

TEST_F(Menus, eachTwinHasItsOwn) {
    startTray();
    startItem("twins");
    const auto both = icons(2);
    std::vector<std::string> lines;
    for (const auto& each : both) {
        openMenu(each);
        chooseEntry(1);
        lines.push_back(text(each.id, "WM_NAME") == "Twins 1" ? "twins: First One"
                                                              : "twins: Second One");
        ASSERT_TRUE(isLogged(lines));
        ASSERT_TRUE(waitFor("the menu closes", [&] { return observer_.popups().empty(); }));
    }
    EXPECT_NE(lines[0], lines[1]);
}

TEST_F(Menus, choicesOfSeveralProcessesFollowEachOther) {
    startTray();
    startItem("mail");
    icons(1);
    startItem("chat");
    const auto both = icons(2);
    std::vector<std::string> lines;
    for (int round = 0; round < 2; ++round)
        for (const auto& each : both) {
            openMenu(each);
            chooseEntry(1);
            lines.push_back(each.className == "Mail" ? "mail: New Message"
                                                     : "chat: Aino: See you there");
            ASSERT_TRUE(isLogged(lines));
            ASSERT_TRUE(waitFor("the menu closes", [&] { return observer_.popups().empty(); }));
        }
}

} // namespace
} // namespace orrivane::e2e
