#include <desktop/bar/AppMenu.h>

#include <gtest/gtest.h>

namespace orrivane::desktop {
namespace {

using Menus = std::vector<AppMenu>;

TEST(AppMenuTest, noTextIsNoMenu) {
    EXPECT_EQ(AppMenu::parse(""), Menus{});
    EXPECT_EQ(AppMenu::parse("\n"), Menus{});
}

TEST(AppMenuTest, everyLineIsAMenuAndEveryFieldAfterItsTitleAnEntry) {
    const Menus expected{{"File", {"New", "-", "Close"}}, {"Help", {}}};
    EXPECT_EQ(AppMenu::parse("File\tNew\t-\tClose\nHelp"), expected);
    EXPECT_EQ(AppMenu::parse("File\tNew\t-\tClose\nHelp\n"), expected);
}

TEST(AppMenuTest, emptyLinesAndFieldsKeepTheirNumbers) {
    const Menus expected{{"File", {"", "Close"}}, {"", {}}, {"Help", {"About"}}};
    EXPECT_EQ(AppMenu::parse("File\t\tClose\n\nHelp\tAbout"), expected);
}

TEST(AppMenuTest, textOfAnyAlphabetIsHandedOnAsItStands) {
    const Menus expected{{"Файл", {"Öffnen …", "保存"}}};
    EXPECT_EQ(AppMenu::parse("Файл\tÖffnen …\t保存"), expected);
}

} // namespace
} // namespace orrivane::desktop
