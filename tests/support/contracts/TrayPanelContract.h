#pragma once

#include <Orrivane/platform/TrayPanel.h>
#include <tests/support/contracts/Contract.h>

#include <vector>

namespace orrivane {

/// The world also offers: `TrayPanel& panel()`, `bool isVisible()`, `Rect frame()` (as the window
/// system shows it, bottom-left-origin points), `void click(Point)` (a point of the panel, its
/// origin at the top left) and `bool hasFocus()`.
template <typename World>
class TrayPanelContract : public Contract<World> {
  protected:
    TrayPanel& panel() { return this->world.panel(); }

    void create() {
        TrayPanelConfiguration configuration;
        configuration.styleMask = 128;
        configuration.floating = true;
        configuration.level = panel().windowLevelForKey(TrayPanel::statusWindowLevelKey) + 1;
        configuration.opaque = false;
        configuration.hasShadow = false;
        configuration.movable = false;
        configuration.hidesOnDeactivate = false;
        configuration.clearBackground = true;
        panel().create(configuration);
    }
    bool visible() {
        return this->world.pumpUntil([&] { return this->world.isVisible(); });
    }
    /// A row of buttons of this size; each counts its clicks.
    static View row(std::vector<int>& clicks, Size button) {
        HorizontalStack stack;
        for (std::size_t i = 0; i < clicks.size(); ++i) {
            View cell;
            cell.key = static_cast<std::uint32_t>(i + 1);
            cell.node = Button{.style = ButtonStyle::plain,
                               .label = Drawing{button, {}},
                               .action = {[&clicks, i] { ++clicks[i]; }},
                               .secondaryAction = {}};
            stack.children.push_back(cell);
        }
        View view;
        view.node = stack;
        return view;
    }

    static constexpr Rect place{{400, 700}, {60, 37}};
};

TYPED_TEST_SUITE_P(TrayPanelContract);

TYPED_TEST_P(TrayPanelContract, theLevelOfStatusItemsIsAboveThatOfOrdinaryWindows) {
    constexpr int normalWindows = 4;
    constexpr int statusItems = 9;
    EXPECT_GT(this->panel().windowLevelForKey(statusItems),
              this->panel().windowLevelForKey(normalWindows));
}

TYPED_TEST_P(TrayPanelContract, aNewPanelIsHidden) {
    this->create();
    EXPECT_FALSE(this->world.isVisible());
}

TYPED_TEST_P(TrayPanelContract, thePanelIsShownWhereItsFrameSays) {
    std::vector<int> clicks(2);
    this->create();
    this->panel().setRoot(this->row(clicks, {30, 37}));
    this->panel().setFrame(this->place);
    EXPECT_FALSE(this->world.isVisible());
    this->panel().orderFrontRegardless();
    ASSERT_TRUE(this->visible());
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->world.frame() == this->place; }));
}

TYPED_TEST_P(TrayPanelContract, itsContentNeverResizesThePanel) {
    std::vector<int> few(2);
    std::vector<int> many(9);
    this->create();
    this->panel().setRoot(this->row(few, {30, 37}));
    this->panel().setFrame(this->place);
    this->panel().orderFrontRegardless();
    ASSERT_TRUE(this->visible());
    this->panel().setRoot(this->row(many, {30, 37}));
    // The answer to a frame that the panel has already shows that what came before it is done.
    ASSERT_TRUE(this->world.pumpUntil([&] { return this->world.frame() == this->place; }));
    EXPECT_TRUE(this->world.isVisible());
}

TYPED_TEST_P(TrayPanelContract, theFrameMayChangeWhileThePanelIsShown) {
    std::vector<int> clicks(1);
    this->create();
    this->panel().setRoot(this->row(clicks, {30, 37}));
    this->panel().setFrame(this->place);
    this->panel().orderFrontRegardless();
    ASSERT_TRUE(this->visible());
    const Rect moved{{430, 700}, {30, 37}};
    this->panel().setFrame(moved);
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->world.frame() == moved; }));
    EXPECT_TRUE(this->world.isVisible());
}

TYPED_TEST_P(TrayPanelContract, hidingAndShowingAreHarmlessTwice) {
    this->create();
    this->panel().setFrame(this->place);
    this->panel().orderOut();
    EXPECT_FALSE(this->world.isVisible());
    for (int round = 0; round < 2; ++round) {
        this->panel().orderFrontRegardless();
        this->panel().orderFrontRegardless();
        ASSERT_TRUE(this->visible());
        this->panel().orderOut();
        this->panel().orderOut();
        ASSERT_TRUE(this->world.pumpUntil([&] { return !this->world.isVisible(); }));
    }
}

TYPED_TEST_P(TrayPanelContract, aClickRunsTheNewestActionOfTheCellUnderIt) {
    std::vector<int> old(2);
    std::vector<int> clicks(2);
    this->create();
    this->panel().setRoot(this->row(old, {30, 37}));
    this->panel().setFrame(this->place);
    this->panel().orderFrontRegardless();
    ASSERT_TRUE(this->visible());
    this->panel().setRoot(this->row(clicks, {30, 37}));
    this->world.click({45, 18});
    ASSERT_TRUE(this->world.pumpUntil([&] { return clicks[1] == 1; }));
    EXPECT_EQ(clicks[0], 0);
    EXPECT_EQ(old, (std::vector{0, 0}));
    EXPECT_FALSE(this->world.hasFocus());
}

REGISTER_TYPED_TEST_SUITE_P(TrayPanelContract, theLevelOfStatusItemsIsAboveThatOfOrdinaryWindows,
                            aNewPanelIsHidden, thePanelIsShownWhereItsFrameSays,
                            itsContentNeverResizesThePanel, theFrameMayChangeWhileThePanelIsShown,
                            hidingAndShowingAreHarmlessTwice,
                            aClickRunsTheNewestActionOfTheCellUnderIt);

} // namespace orrivane
