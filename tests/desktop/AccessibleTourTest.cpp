#include "AccessibleOnDesktop.h"

#include <algorithm>

namespace orrivane::e2e {
namespace {

/// The program's window, read and worked by another process.
class AccessibleTour : public AccessibleOnDesktop {
  protected:
    void SetUp() override { startAndOpenWindow(); }

    bool becomes(const std::vector<std::string>& expected) {
        return bool(waitFor("the bar has the new order", [&] { return order() == expected; }));
    }
};

TEST_F(AccessibleTour, tabVisitsEveryControlInReadingOrderAndComesRoundAgain) {
    expectTabGoesInReadingOrder();
}

TEST_F(AccessibleTour, everyControlHasItsNameAndRole) {
    std::vector<Control> found;
    for (const auto& each : reading_->enabledControls()) {
        found.push_back(reading_->described(each));
        EXPECT_FALSE(found.back().second.empty()) << found.back().first;
        EXPECT_GT(tree().extents(each).width, 0) << found.back().second;
    }
    // What comes and goes with the build and with time.
    std::erase_if(found, [](const Control& each) {
        return each.second == "Check for Updates…" || each.second == "Refresh";
    });
    std::vector<Control> expected{
        {"check box", "Show hidden icons beside the notch"},
        {"check box", "Keep mirroring on the notched screen while external displays are connected"},
        {"push button", "Hide icon list"},
        {"push button", "Refresh the icon list"},
        {"check box", "Tighten macOS icon spacing"},
        {"slider", "Spacing"},
        {"push button", "Apply"},
        {"push button", "Apply & Restart Menu Bar"},
        {"push button", "Reset to Default"},
        {"check box", "Check automatically"},
        {"check box", "Launch at login"},
        {"check box", "Menu bar icon"},
        {"push button", "Quit"},
    };
    std::vector<Control> tiles;
    for (const auto& icon : desktop_->icons())
        tiles.emplace_back("list item", icon.className);
    expected.insert(expected.begin() + 3, tiles.begin(), tiles.end());
    EXPECT_EQ(found, expected);
    std::vector<std::string> headings;
    for (const auto& box : reading_->ofRole("panel"))
        if (!tree().name(box).empty())
            headings.push_back(tree().name(box));
    EXPECT_EQ(headings,
              (std::vector<std::string>{"Now", "Preview", "Orrivane Notch", "Arrange", "Squeeze"}));
}

TEST_F(AccessibleTour, aSwitchSaysWhetherItIsOnAndIsTurnedByItsAction) {
    const auto icon = reading_->require({"check box", "Menu bar icon"});
    const auto mirrors = reading_->require({"check box", "Show hidden icons beside the notch"});
    EXPECT_FALSE(tree().has(icon, AccessibleTree::checked));
    EXPECT_TRUE(tree().has(mirrors, AccessibleTree::checked));
    const auto docked = desktop_->icons().size();
    ASSERT_TRUE(tree().perform(icon, "Toggle"));
    EXPECT_TRUE(waitFor("it is on", [&] { return tree().has(icon, AccessibleTree::checked); }));
    EXPECT_TRUE(
        waitFor("the own icon is there", [&] { return desktop_->icons().size() == docked + 1; }));
    ASSERT_TRUE(tree().perform(icon, "Toggle"));
    EXPECT_TRUE(waitFor("it is off", [&] { return !tree().has(icon, AccessibleTree::checked); }));
    EXPECT_TRUE(
        waitFor("the own icon is gone", [&] { return desktop_->icons().size() == docked; }));
}

TEST_F(AccessibleTour, theSliderTellsItsValueAndTakesAnother) {
    const auto slider = reading_->require({"slider", "Spacing"});
    EXPECT_EQ(tree().value(slider, "MinimumValue"), 4);
    EXPECT_EQ(tree().value(slider, "MaximumValue"), 16);
    EXPECT_EQ(tree().value(slider, "CurrentValue"), 16);
    EXPECT_TRUE(reading_->find({"label", "At spacing 16"}));
    tree().setValue(slider, 9);
    const auto previews = [&] { return reading_->find({"label", "At spacing 9"}).has_value(); };
    EXPECT_TRUE(waitFor("the preview is that of the new value", previews));
    EXPECT_EQ(tree().value(slider, "CurrentValue"), 9);
}

TEST_F(AccessibleTour, buttonsArePressedByTheirAction) {
    ASSERT_TRUE(tree().perform(reading_->require({"push button", "Hide icon list"}), "Press"));
    EXPECT_TRUE(waitFor("the list is closed", [&] {
        return reading_->find({"push button", "Show icon list"}) &&
               reading_->ofRole("list item").empty();
    }));
    ASSERT_TRUE(tree().perform(reading_->require({"push button", "Show icon list"}), "Press"));
    EXPECT_TRUE(
        waitFor("the list is open", [&] { return reading_->ofRole("list item").size() == 4; }));

    ASSERT_TRUE(tree().perform(reading_->require({"push button", "Reset to Default"}), "Press"));
    const auto cancel = reading_->require({"push button", "Cancel"});
    EXPECT_TRUE(reading_->find({"push button", "Reset Without Restart"}));
    ASSERT_TRUE(tree().perform(cancel, "Press"));
    EXPECT_TRUE(waitFor("the question is gone",
                        [&] { return !reading_->find({"push button", "Cancel"}); }));
}

TEST_F(AccessibleTour, aTileIsMovedByItsAction) {
    auto expected = order();
    ASSERT_EQ(expected.size(), 4U);
    const auto tiles = reading_->ofRole("list item");
    EXPECT_NE(tree().description(tiles.back()), "");
    ASSERT_TRUE(tree().perform(tiles.back(), "Move Left"));
    std::swap(expected[2], expected[3]);
    EXPECT_TRUE(becomes(expected)) << testing::PrintToString(order());
}

TEST_F(AccessibleTour, aTileIsMovedWithTheKeyboard) {
    auto expected = order();
    ASSERT_EQ(expected.size(), 4U);
    const auto tile = reading_->ofRole("list item").back();
    ASSERT_TRUE(tree().grabFocus(tile));
    ASSERT_TRUE(
        waitFor("it is focused", [&] { return tree().has(tile, AccessibleTree::focused); }));
    observer().key(keyAlt, true);
    observer().tapKey(keyLeft, 2);
    EXPECT_TRUE(staysTrue(
        "nothing moves while the key is held", [&] { return order() == expected; },
        std::chrono::milliseconds(800)));
    observer().key(keyAlt, false);
    std::rotate(expected.begin() + 1, expected.end() - 1, expected.end());
    EXPECT_TRUE(becomes(expected)) << testing::PrintToString(order());
    EXPECT_TRUE(waitFor("the tile has the keyboard still and stands there", [&] {
        const auto tiles = reading_->ofRole("list item");
        return tiles.size() == 4 && tiles[1] == tile && tree().has(tile, AccessibleTree::focused);
    }));
}

} // namespace
} // namespace orrivane::e2e
