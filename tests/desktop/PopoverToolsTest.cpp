#include "AccessibleOnDesktop.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace orrivane::e2e {
namespace {

/// The popover under the program's own icon on the notched desktop, with everything in it open.
class PopoverTools : public AccessibleOnDesktop {
  protected:
    void SetUp() override { startAndOpenPopover(); }

    bool popoverStays() {
        return bool(staysTrue(
            "the popover stays", [&] { return mainWindow().has_value(); },
            std::chrono::milliseconds(1000)));
    }
    AccessibleNode button(const std::string& name) {
        return reading_->require({"push button", name});
    }
    /// Begins to take the last item one place to the left; the order that this leads to.
    std::vector<std::string> beginAMove() {
        auto expected = order();
        std::iter_swap(expected.end() - 1, expected.end() - 2);
        EXPECT_TRUE(tree().perform(reading_->ofRole("list item").back(), "Move Left"));
        return expected;
    }
    /// What the server sees held: the first button and Super.
    unsigned held() {
        const auto cookie = xcb_query_pointer(observer().connection(), observer().root());
        auto* reply = xcb_query_pointer_reply(observer().connection(), cookie, nullptr);
        const unsigned mask = reply ? reply->mask : 0U;
        std::free(reply);
        return mask & everything;
    }

    static constexpr unsigned everything = unsigned{XCB_BUTTON_MASK_1} | XCB_MOD_MASK_4;
};

TEST_F(PopoverTools, aQuestionIsAnsweredAndThePopoverStays) {
    ASSERT_TRUE(tree().perform(button("Reset to Default"), "Press"));
    const auto cancel = tree().extents(button("Cancel"));
    EXPECT_TRUE(popoverStays());
    observer().click(cancel.centre());
    ASSERT_TRUE(waitFor("the question is gone",
                        [&] { return !reading_->find({"push button", "Cancel"}); }));
    EXPECT_TRUE(popoverStays());
}

TEST_F(PopoverTools, anItemIsMovedAndThePopoverStays) {
    const auto expected = beginAMove();
    ASSERT_TRUE(waitFor("the bar has the new order", [&] { return order() == expected; }))
        << testing::PrintToString(order());
    EXPECT_TRUE(popoverStays());
    EXPECT_EQ(held(), 0U);
    EXPECT_TRUE(waitFor("it has the keyboard again", [&] {
        const auto shown = mainWindow();
        return shown && observer().focusWindow() == shown->id;
    }));
    observer().tapKey(keyEscape);
    EXPECT_TRUE(waitFor("it closes as ever", [&] { return !mainWindow(); }));
}

TEST_F(PopoverTools, aProgramThatIsToldToEndWhileItDragsLeavesNothingPressed) {
    beginAMove();
    ASSERT_TRUE(waitFor("it drags", [&] { return held() == everything; }));
    kill(program_->pid(), SIGTERM);
    EXPECT_EQ(program_->wait(std::chrono::seconds(10)), (ExitStatus{0, {}}));
    EXPECT_EQ(held(), 0U);
}

TEST_F(PopoverTools, neitherDoesOneThatIsInterrupted) {
    beginAMove();
    ASSERT_TRUE(waitFor("it drags", [&] { return held() == everything; }));
    kill(program_->pid(), SIGINT);
    EXPECT_EQ(program_->wait(std::chrono::seconds(10)), (ExitStatus{0, {}}));
    EXPECT_EQ(held(), 0U);
}

TEST_F(PopoverTools, norOneWhoseTerminalGoes) {
    beginAMove();
    ASSERT_TRUE(waitFor("it drags", [&] { return held() == everything; }));
    kill(program_->pid(), SIGHUP);
    EXPECT_EQ(program_->wait(std::chrono::seconds(10)), (ExitStatus{0, {}}));
    EXPECT_EQ(held(), 0U);
}

TEST_F(PopoverTools, norOneThatCrashes) {
    beginAMove();
    ASSERT_TRUE(waitFor("it drags", [&] { return held() == everything; }));
    kill(program_->pid(), SIGABRT);
    EXPECT_EQ(program_->wait(std::chrono::seconds(10)), (ExitStatus{{}, SIGABRT}));
    EXPECT_TRUE(waitFor("all is released", [&] { return held() == 0U; }));
}

} // namespace
} // namespace orrivane::e2e
