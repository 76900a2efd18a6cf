#include "AccessibleOnDesktop.h"

#include <algorithm>

namespace orrivane::e2e {
namespace {

/// The popover, opened by a click on the program's own icon, read by another process.
class AccessiblePopover : public AccessibleOnDesktop {
  protected:
    void SetUp() override { startAndOpenPopover(); }

    std::vector<Control> everything() {
        std::vector<Control> result;
        for (const auto& each : reading_->controls())
            result.push_back(reading_->described(each));
        return result;
    }
};

TEST_F(AccessiblePopover, tabVisitsEveryControlInReadingOrderAndComesRoundAgain) {
    expectTabGoesInReadingOrder();
}

TEST_F(AccessiblePopover, everyControlHasANameARoleAndAPlace) {
    const auto controls = reading_->controls();
    EXPECT_GT(controls.size(), 12U);
    for (const auto& each : controls) {
        const auto [role, name] = reading_->described(each);
        EXPECT_FALSE(name.empty()) << "a " << role;
        EXPECT_TRUE(role == "push button" || role == "check box" || role == "slider" ||
                    role == "list item")
            << role << ' ' << name;
        EXPECT_GT(tree().extents(each).width, 0) << name;
        EXPECT_GT(tree().extents(each).height, 0) << name;
    }
}

TEST_F(AccessiblePopover, hasTheWindowsControlsInTheSameOrderAndTheOneThatOpensIt) {
    const auto inPopover = everything();
    const Control opener{"push button", "Open Window"};
    ASSERT_TRUE(tree().perform(reading_->require(opener), "Press"));
    ASSERT_TRUE(waitFor("the window takes its place", [&] {
        return !reading_->find(opener) && mainWindow() &&
               reading_->ofRole("list item").size() == desktop_->icons().size();
    }));
    auto expected = everything();
    for (const char* name : {"Apply & Restart Menu Bar", "Quit"})
        EXPECT_EQ(std::ranges::count(expected, Control{"push button", name}), 1) << name;
    expected.insert(expected.begin(), opener);
    EXPECT_EQ(inPopover, expected);
}

} // namespace
} // namespace orrivane::e2e
