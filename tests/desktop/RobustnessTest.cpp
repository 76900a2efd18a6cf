#include "Mirror.h"
#include "TestWindow.h"

#include <linux/support/SetMonitor.h>

#include <cstdlib>

namespace orrivane::e2e {
namespace {

/// Two applications under the notch of a trayer, and the program once `run` is called.
class Robustness : public testing::Test {
  protected:
    Robustness() {
        desktop_.emplace(Desktop::Options{});
        desktop_->startClient("parcellite");
        desktop_->startClient("volumeicon");
        desktop_->cutOutIcons(0, 1);
        mirror_.emplace(*desktop_);
    }
    void run() {
        desktop_->startProgram();
        ASSERT_TRUE(mirror_->waitUntilRight());
    }
    [[nodiscard]] testing::AssertionResult waitUntilHidden() {
        return waitFor("the strip is hidden", [&] { return !desktop_->strip(); });
    }
    /// A screen of the server's that no output shows.
    void addMonitor(const PixelRect& area) {
        auto& observer = desktop_->observer();
        const auto cookie =
            setMonitor(observer.connection(), {.root = observer.root(),
                                               .name = observer.atom("second"),
                                               .x = static_cast<std::int16_t>(area.x),
                                               .y = static_cast<std::int16_t>(area.y),
                                               .width = static_cast<std::uint16_t>(area.width),
                                               .height = static_cast<std::uint16_t>(area.height)});
        auto* error = xcb_request_check(observer.connection(), cookie);
        EXPECT_EQ(error, nullptr);
        std::free(error);
    }

    std::optional<Desktop> desktop_;
    std::optional<Mirror> mirror_;
};

TEST_F(Robustness, aFullScreenWindowUnmapsTheStripAndItsEndBringsItBack) {
    run();
    TestWindow cover(desktop_->observer(),
                     {.area = {0, 0, 1512, 982}, .fullScreen = true, .name = "film"});
    cover.map();
    EXPECT_TRUE(waitUntilHidden());
    cover.unmap();
    EXPECT_TRUE(mirror_->waitUntilRight());
}

TEST_F(Robustness, anOrdinaryWindowLeavesTheStripAlone) {
    run();
    TestWindow window(desktop_->observer(), {.area = {0, 20, 900, 600}, .name = "editor"});
    window.map();
    ASSERT_TRUE(waitFor("it is managed", [&] { return window.isManaged(); }));
    EXPECT_TRUE(staysTrue(
        "the strip shows", [&] { return desktop_->strip().has_value(); },
        std::chrono::milliseconds(1500)));
}

TEST_F(Robustness, aStoppedApplicationKeepsItsCellAndItsClickDoesNotStallTheProgram) {
    run();
    auto& stopped = desktop_->clients().front();
    stopped.process.stop();
    desktop_->observer().click(mirror_->cellOf(stopped.icon).centre());
    // Another application's menu opens all the same once the button is let go.
    auto& other = desktop_->clients().back();
    EXPECT_TRUE(staysTrue(
        "the strip shows", [&] { return mirror_->isRight(); }, std::chrono::milliseconds(1500)));
    desktop_->observer().click(mirror_->cellOf(other.icon).centre(), other.kind->menuButton);
    EXPECT_TRUE(waitFor("a menu opens", [&] { return !desktop_->popupsOf(other.icon).empty(); }));
    stopped.process.resume();
}

TEST_F(Robustness, aGrabbedServerDoesNotEndTheProgram) {
    run();
    desktop_->observer().grabServer();
    // Long enough for a tick; the grab is on this connection, so nobody else can be asked.
    EXPECT_TRUE(staysTrue(
        "the program runs", [&] { return desktop_->program().isRunning(); },
        std::chrono::milliseconds(1500)));
    desktop_->observer().ungrabServer();
    EXPECT_TRUE(mirror_->waitUntilRight());
    desktop_->clients().front().process.kill();
    ASSERT_TRUE(waitFor("its icon goes", [&] { return desktop_->foreignIcons().size() == 1; }));
    EXPECT_TRUE(mirror_->waitUntilRight());
}

TEST_F(Robustness, aSecondScreenObeysTheExternalRule) {
    desktop_->setDefault("OrrivaneMirrorOnExternal", false);
    run();
    addMonitor({1000, 500, 400, 400});
    EXPECT_TRUE(waitUntilHidden());
    desktop_->setDefault("OrrivaneMirrorOnExternal", true);
    EXPECT_TRUE(mirror_->waitUntilRight());
}

TEST_F(Robustness, withTheSwitchStoredOffNothingShows) {
    desktop_->setDefault("OrrivaneStripEnabled", false);
    auto& program = desktop_->startProgram();
    EXPECT_TRUE(staysTrue(
        "nothing shows", [&] { return !desktop_->strip() && program.isRunning(); },
        std::chrono::milliseconds(1500)));
}

TEST_F(Robustness, aBlankedScreenHidesTheStripAndItIsBackAfterwards) {
    run();
    auto* raw = desktop_->observer().connection();
    xcb_force_screen_saver(raw, XCB_SCREEN_SAVER_ACTIVE);
    xcb_flush(raw);
    EXPECT_TRUE(waitUntilHidden());
    xcb_force_screen_saver(raw, XCB_SCREEN_SAVER_RESET);
    xcb_flush(raw);
    EXPECT_TRUE(mirror_->waitUntilRight());
}

TEST_F(Robustness, aNotchThatIsTakenAwayHidesTheStrip) {
    run();
    desktop_->observer().deleteProperty(desktop_->observer().root(), "_ORRIVANE_DISPLAY_CUTOUT");
    EXPECT_TRUE(waitFor("no window of the program shows", [&] {
        for (const auto& window : desktop_->programWindows())
            if (window.isViewable() && window.area.width > 8)
                return false;
        return true;
    }));
}

TEST_F(Robustness, aWindowManagerThatIsReplacedChangesNothing) {
    run();
    desktop_->windowManager().kill();
    EXPECT_TRUE(staysTrue(
        "the program runs", [&] { return desktop_->program().isRunning(); },
        std::chrono::milliseconds(1200)));
    EXPECT_TRUE(mirror_->waitUntilRight());
}

TEST_F(Robustness, iconsThatComeAndGoAllTheTimeLeaveTheStripRight) {
    run();
    for (int round = 0; round < 4; ++round) {
        desktop_->clients().back().process.kill();
        ASSERT_TRUE(waitFor("its icon goes", [&] { return desktop_->foreignIcons().size() == 1; }));
        desktop_->clients().pop_back();
        desktop_->startClient("volumeicon");
    }
    EXPECT_TRUE(mirror_->waitUntilRight());
    EXPECT_EQ(desktop_->program().terminate(defaultBound), (ExitStatus{0, {}}));
    EXPECT_TRUE(desktop_->programWindows().empty());
}

} // namespace
} // namespace orrivane::e2e
