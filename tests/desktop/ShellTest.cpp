#include "Mirror.h"
#include "TestWindow.h"

#include <tests/support/Json.h>

#include <stdexcept>

namespace orrivane::e2e {
namespace {

constexpr xcb_keysym_t escapeKey = 0xff1b; // keysymdef.h

/// The program with its own icon, in a trayer with two applications.
class Shell : public testing::Test {
  protected:
    Shell() {
        desktop_.emplace(Desktop::Options{});
        desktop_->setDefault("OrrivaneShowStatusItem", true);
        desktop_->startClient("parcellite");
        desktop_->startClient("volumeicon");
    }
    void run() {
        desktop_->startProgram();
        ASSERT_TRUE(waitFor("the own icon is docked", [&] { return ownIcon().has_value(); }));
    }
    /// The program, stopped when it has just become the one of this desktop and shows nothing yet.
    void startAndHold() {
        auto& program = desktop_->startProgram();
        const auto end = std::chrono::steady_clock::now() + defaultBound;
        while (desktop_->observer().selectionOwner("_ORRIVANE_S0") == XCB_NONE)
            ASSERT_LT(std::chrono::steady_clock::now(), end) << program.log();
        program.stop();
    }
    [[nodiscard]] std::optional<WindowState> ownIcon() {
        for (const auto& icon : desktop_->observer().trayIcons())
            if (icon.isViewable() &&
                desktop_->observer().pidOf(icon.id) == desktop_->program().pid())
                return icon;
        return std::nullopt;
    }
    /// A large window of the program's, wherever the window manager has put it.
    [[nodiscard]] std::optional<WindowState> largeWindow() {
        for (const auto& window : desktop_->observer().tree())
            if (window.isViewable() && window.area.width >= 560 && window.area.height >= 300 &&
                desktop_->observer().pidOf(window.id) == desktop_->program().pid())
                return window;
        return std::nullopt;
    }
    [[nodiscard]] bool appears() {
        return bool(waitFor("a window appears", [&] { return largeWindow().has_value(); }));
    }
    [[nodiscard]] bool vanishes() {
        return bool(waitFor("the window vanishes", [&] { return !largeWindow(); }));
    }
    /// Another launch with these arguments; its exit status.
    int launchAgain(const std::vector<std::string>& arguments, const std::string& output = {}) {
        const auto status = desktop_->launchAgain(arguments, output);
        return status ? status->code.value_or(-1) : -1;
    }

    /// The member of a list of objects that has this value there; throws when there is none.
    static Json memberWith(const Json& list, std::string_view key, double value) {
        for (const auto& member : list.list())
            if (member[key].number() == value)
                return member;
        throw std::runtime_error("nothing has " + std::string(key) + " " + std::to_string(value));
    }

    std::optional<Desktop> desktop_;
};

TEST_F(Shell, startsWithoutAWindow) {
    run();
    EXPECT_FALSE(largeWindow());
}

TEST_F(Shell, theOwnIconIsNotMirroredWhenTheNotchHidesIt) {
    run();
    const auto own = ownIcon()->area;
    desktop_->setCutout(own.x + 1, desktop_->foreignIcons().back().area.right());
    Mirror mirror(*desktop_);
    ASSERT_TRUE(waitFor("others are hidden", [&] { return !mirror.hiddenIcons().empty(); }));
    EXPECT_TRUE(mirror.waitUntilRight());
    EXPECT_TRUE(staysTrue(
        "only the others are mirrored", [&] { return mirror.isRight(); },
        std::chrono::milliseconds(2500)));
}

TEST_F(Shell, aClickOnTheOwnIconOpensThePopoverAndAnotherOneClosesIt) {
    run();
    const auto place = ownIcon()->area.centre();
    desktop_->observer().click(place);
    ASSERT_TRUE(appears());
    EXPECT_GE(largeWindow()->area.y, 0);
    desktop_->observer().click(place);
    EXPECT_TRUE(vanishes());
    desktop_->observer().click(place);
    EXPECT_TRUE(appears());
}

TEST_F(Shell, escapeClosesThePopover) {
    run();
    desktop_->observer().click(ownIcon()->area.centre());
    ASSERT_TRUE(appears());
    ASSERT_TRUE(waitFor("it has the keyboard",
                        [&] { return desktop_->observer().activeWindow() == largeWindow()->id; }));
    desktop_->observer().tapKey(escapeKey);
    EXPECT_TRUE(vanishes());
}

TEST_F(Shell, anotherWindowThatTakesTheKeyboardClosesThePopover) {
    run();
    desktop_->observer().click(ownIcon()->area.centre());
    ASSERT_TRUE(appears());
    TestWindow other(desktop_->observer(), {.area = {0, 700, 300, 200}, .name = "editor"});
    other.map();
    ASSERT_TRUE(waitFor("it is managed", [&] { return other.isManaged(); }));
    desktop_->observer().click({150, 850});
    EXPECT_TRUE(vanishes());
}

TEST_F(Shell, aSecondLaunchBringsTheWindowAndEnds) {
    run();
    EXPECT_EQ(launchAgain({}), 0);
    EXPECT_TRUE(appears());
    EXPECT_TRUE(desktop_->program().isRunning());
}

TEST_F(Shell, aSecondLaunchWhileTheFirstStillStartsBringsTheWindow) {
    startAndHold();
    EXPECT_EQ(launchAgain({}), 0);
    desktop_->program().resume();
    EXPECT_TRUE(appears());
}

TEST_F(Shell, quitEndsAProgramThatStillStarts) {
    startAndHold();
    EXPECT_EQ(launchAgain({"--quit"}), 0);
    desktop_->program().resume();
    EXPECT_EQ(desktop_->program().wait(defaultBound), (ExitStatus{0, {}}));
}

TEST_F(Shell, aSecondLaunchBringsAWindowForwardThatLiesBehindAnother) {
    run();
    ASSERT_EQ(launchAgain({}), 0);
    ASSERT_TRUE(appears());
    const auto window = *largeWindow();
    ASSERT_TRUE(
        waitFor("it is active", [&] { return desktop_->observer().activeWindow() == window.id; }));
    TestWindow other(desktop_->observer(), {.area = {0, 100, 1400, 800}, .name = "editor"});
    other.map();
    ASSERT_TRUE(waitFor("it is managed", [&] { return other.isManaged(); }));
    desktop_->observer().click({20, 850});
    const auto middle = window.area.centre();
    ASSERT_TRUE(waitFor("it covers the window", [&] {
        return desktop_->observer().activeWindow() != window.id &&
               desktop_->observer().pidOf(desktop_->observer().leafAt(middle)) !=
                   desktop_->program().pid();
    }));
    EXPECT_EQ(launchAgain({}), 0);
    EXPECT_TRUE(waitFor("the window is in front and has the keyboard", [&] {
        return desktop_->observer().activeWindow() == window.id &&
               desktop_->observer().pidOf(desktop_->observer().leafAt(middle)) ==
                   desktop_->program().pid();
    }));
}

TEST_F(Shell, theWindowWithItsTitleBarStandsBelowTheTopOfTheFreeArea) {
    run();
    ASSERT_EQ(launchAgain({}), 0);
    ASSERT_TRUE(appears());
    // The frame that the window manager has put around it is its top level.
    auto window = *largeWindow();
    while (window.level > 1)
        window = desktop_->observer().window(window.parent).value();
    EXPECT_EQ(window.area.y, desktop_->observer().dockOf()->area.bottom() + 8);
    EXPECT_LT(window.area.y, largeWindow()->area.y);
}

TEST_F(Shell, quitEndsTheRunningProgramAndSaysWhenThereIsNone) {
    run();
    EXPECT_EQ(launchAgain({"--quit"}), 0);
    EXPECT_TRUE(waitFor("it ended", [&] { return !desktop_->program().isRunning(); }));
    EXPECT_EQ(launchAgain({"--quit"}), 1);
}

TEST_F(Shell, theSwitchTakesTheOwnIconAway) {
    desktop_->setDefault("OrrivaneShowStatusItem", false);
    desktop_->startProgram();
    EXPECT_TRUE(staysTrue(
        "no icon of its own", [&] { return !ownIcon(); }, std::chrono::milliseconds(1500)));
    EXPECT_EQ(launchAgain({}), 0);
    EXPECT_TRUE(appears());
}

TEST_F(Shell, diagnosisWorksBesideARunningProgram) {
    run();
    const auto output = desktop_->directory() + "/diagnosis.json";
    EXPECT_EQ(launchAgain({"--diagnose", "--json"}, output), 0);
    const auto text = readFile(output);
    SCOPED_TRACE(text);
    EXPECT_EQ(launchAgain({"--diagnose"}, output + ".txt"), 0);
    EXPECT_NE(readFile(output + ".txt")
                  .find("Running: yes, process " + std::to_string(desktop_->program().pid())),
              std::string::npos)
        << readFile(output + ".txt");
    const auto diagnosis = Json::parse(text);
    EXPECT_EQ(diagnosis["runningProcess"].number(), desktop_->program().pid());
    EXPECT_TRUE(diagnosis["ownWindows"]["isRunningElsewhere"].truth());
    EXPECT_TRUE(diagnosis["screens"][0]["isMain"].truth());
    EXPECT_TRUE(diagnosis["captures"].isNull());
    for (const auto& icon : desktop_->foreignIcons()) {
        const double process = desktop_->observer().pidOf(icon.id).value();
        EXPECT_EQ(memberWith(diagnosis["items"], "id", icon.id)["process"].number(), process);
        const auto window = memberWith(diagnosis["windows"], "number", icon.id);
        EXPECT_EQ(window["layer"].number(), 25);
        EXPECT_EQ(window["process"].number(), process);
        const auto bar = memberWith(diagnosis["extrasBars"], "process", process);
        EXPECT_EQ(bar["application"].text(), window["owner"].text());
        EXPECT_EQ(bar["children"][0]["role"].text(), "AXMenuBarItem");
    }
}

TEST_F(Shell, diagnosisTriesToCaptureEveryItemIfAsked) {
    run();
    const auto output = desktop_->directory() + "/diagnosis.json";
    EXPECT_EQ(launchAgain({"--diagnose", "--json", "--capture"}, output), 0);
    const auto text = readFile(output);
    SCOPED_TRACE(text);
    const auto captures = Json::parse(text)["captures"];
    EXPECT_GE(captures["snapshotSize"].number(), 3);
    for (const auto& icon : desktop_->foreignIcons()) {
        const auto capture = memberWith(captures["windows"], "id", icon.id);
        EXPECT_TRUE(capture["isInSnapshot"].truth());
        EXPECT_EQ(capture["picture"]["width"].number(), 2 * icon.area.width);
        EXPECT_FALSE(capture["picture"]["isClear"].truth());
    }
    EXPECT_TRUE(desktop_->program().isRunning());
}

TEST_F(Shell, diagnosisWorksWithoutOne) {
    const auto output = desktop_->directory() + "/diagnosis.txt";
    EXPECT_EQ(launchAgain({"--diagnose"}, output), 0);
    EXPECT_NE(readFile(output).find("Running: no\n"), std::string::npos) << readFile(output);
    EXPECT_EQ(launchAgain({"--diagnose", "--json"}, output + ".json"), 0);
    const auto text = readFile(output + ".json");
    SCOPED_TRACE(text);
    const auto diagnosis = Json::parse(text);
    EXPECT_TRUE(diagnosis["runningProcess"].isNull());
    EXPECT_FALSE(diagnosis["ownWindows"]["isRunningElsewhere"].truth());
    EXPECT_EQ(diagnosis["items"].list().size(), desktop_->foreignIcons().size());
}

} // namespace
} // namespace orrivane::e2e
