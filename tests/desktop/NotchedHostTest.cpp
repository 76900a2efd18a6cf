#include "AccessibleProgram.h"
#include "ProgramOnDesktop.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <numeric>

#include <xcb/screensaver.h>

namespace orrivane::e2e {
namespace {

using std::chrono::milliseconds;

/// The program on the notched desktop, seen by a second connection.
class NotchedHost : public ProgramOnDesktop {
  protected:
    void start(std::vector<std::string> arguments, int scale = 1) {
        scale_ = scale;
        arguments.insert(arguments.end(), {"--scale", std::to_string(scale)});
        ProgramOnDesktop::start(arguments, settings(true),
                                {{"QT_SCALE_FACTOR", std::to_string(scale)}});
    }
    static Settings settings(bool mirrorOnExternal) {
        return {{"OrrivaneShowStatusItem", false}, {"OrrivaneMirrorOnExternal", mirrorOnExternal}};
    }
    PixelRect notch() { return observer().cutouts().at(0); }

    std::vector<WindowState> hidden() {
        std::vector<WindowState> result;
        for (const auto& icon : desktop_->icons())
            if (icon.isViewable() && icon.area.x < notch().right() && icon.area.right() > notch().x)
                result.push_back(icon);
        return result;
    }
    std::optional<WindowState> strip() {
        for (const auto& window : observer().topLevels())
            if (windows().own(window) && window.overrideRedirect &&
                window.type != "_NET_WM_WINDOW_TYPE_TOOLTIP" &&
                window.area.height == notch().height &&
                window.area.right() == notch().x - 6 * scale_)
                return window;
        return std::nullopt;
    }
    /// How many of the hidden icons, from the notch leftwards, the strip is as wide as; absent when
    /// it is not as wide as a whole number of them.
    std::optional<std::size_t> mirrored() {
        const auto shown = strip();
        if (!shown)
            return 0;
        const auto icons = hidden();
        int width = 0;
        for (std::size_t count = 1; count <= icons.size(); ++count) {
            width += icons[icons.size() - count].area.width;
            if (width == shown->area.width)
                return count;
        }
        return std::nullopt;
    }
    testing::AssertionResult waitUntilAllAreMirrored() {
        return waitFor("all hidden icons are mirrored",
                       [&] { return !hidden().empty() && mirrored() == hidden().size(); });
    }
    testing::AssertionResult waitUntilMirrored(std::size_t count) {
        return waitFor("as many icons are mirrored", [&] { return mirrored() == count; });
    }
    /// Where the menus that the bar shows end, as the bar itself tells assistive programs.
    int menusEnd() {
        AccessibleProgram bar(desktop_->environment().at("DBUS_SESSION_BUS_ADDRESS"),
                              desktop_->processesOf("ControlCenter").at(0));
        int end = 0;
        for (const auto& title : bar.ofRole("menu item"))
            end = std::max(end, bar.tree().extents(title).right());
        return end;
    }
    /// Clicks a window of the application to bring it to the front.
    void bringToFront(const std::string& className) {
        const auto application = waitForValue<WindowState>("its window", [&] {
            std::optional<WindowState> found;
            for (const auto& window : observer().tree())
                if (window.isViewable() && window.className == className && window.area.width > 200)
                    found = window;
            return found;
        });
        // Beside its title, where no other window lies and nothing else answers.
        const int fromEdge = application.area.width / 4;
        observer().click({className == "Notes" ? application.area.x + fromEdge
                                               : application.area.right() - fromEdge,
                          application.area.y + 16});
    }
    void blank(bool blanked) {
        auto* raw = observer().connection();
        xcb_force_screen_saver(raw, blanked ? XCB_SCREEN_SAVER_ACTIVE : XCB_SCREEN_SAVER_RESET);
        xcb_flush(raw);
    }

    int scale_ = 1;
};

std::string many(const std::string& item, int count) {
    std::string result = item;
    for (int i = 1; i < count; ++i)
        result += "," + item;
    return result;
}

// Narrow enough for a few icons to lie under it, far enough left for room beside the menus.
const std::vector<std::string> fewHidden{"--items", many("battery,wifi,volume,mail,cpu,cloud", 2),
                                         "--panel", "800,0,200,37", "--no-windows"};

TEST_F(NotchedHost, mirrorsWhatTheNotchHidesAtScaleOne) {
    start(fewHidden);
    EXPECT_TRUE(waitUntilAllAreMirrored());
}

TEST_F(NotchedHost, mirrorsWhatTheNotchHidesAtScaleTwo) {
    start({"--items", many("battery,wifi,volume,mail,cpu,cloud", 2), "--panel", "1600,0,400,74",
           "--no-windows"},
          2);
    EXPECT_TRUE(waitUntilAllAreMirrored());
}

TEST_F(NotchedHost, aClickOnTheMirrorOpensTheItemsMenuAndItsChoiceIsMade) {
    start({"--items", "battery,wifi,volume,mail", "--panel", "1190,0,100,37", "--no-windows"});
    ASSERT_TRUE(waitUntilAllAreMirrored());
    const auto icons = hidden();
    const auto cell = strip()->area;
    const auto width = icons.back().area.width;
    observer().click({cell.right() - width / 2, cell.y + cell.height / 2});
    const auto menu = waitForValue<WindowState>("its menu", [&] {
        std::optional<WindowState> found;
        for (const auto& popup : observer().popups())
            if (observer().sameClient(popup.id, icons.back().id))
                found = popup;
        return found;
    });
    EXPECT_GE(menu.area.y, notch().bottom() - 1);
    observer().tapKey(keyDown);
    observer().tapKey(keyReturn);
    EXPECT_TRUE(waitFor("the choice is made", [&] { return !desktop_->choices().empty(); }));
    EXPECT_TRUE(desktop_->choices().starts_with(icons.back().instanceName + ": "))
        << desktop_->choices();
}

TEST_F(NotchedHost, aLongerMenuInFrontLeavesRoomForFewer) {
    start({"--panel", "663,0,400,37"});
    bringToFront("Notes");
    ASSERT_TRUE(waitFor("icons are mirrored", [&] { return mirrored().value_or(0) > 1; }));
    std::size_t beside = 0;
    ASSERT_TRUE(staysTrue(
        "it has settled",
        [&] {
            beside = mirrored().value_or(0);
            return true;
        },
        milliseconds(2500)));
    bringToFront("Sketch");
    EXPECT_TRUE(
        waitFor("fewer are mirrored", [&] { return mirrored().value_or(beside) < beside; }));
    bringToFront("Notes");
    EXPECT_TRUE(waitUntilMirrored(beside));
}

TEST_F(NotchedHost, aBarThatIsKilledComesBackAndTheMirrorWithIt) {
    start(fewHidden);
    ASSERT_TRUE(waitUntilAllAreMirrored());
    const auto bar = desktop_->processesOf("ControlCenter").at(0);
    kill(bar, SIGKILL);
    ASSERT_TRUE(waitFor("another bar", [&] {
        const auto bars = desktop_->processesOf("ControlCenter");
        return bars.size() == 1 && bars[0] != bar && desktop_->icons().size() == 12;
    }));
    EXPECT_TRUE(waitUntilAllAreMirrored());
}

TEST_F(NotchedHost, theScreensSleepHidesTheTrayAndItComesBackSomeTimeAfterTheWake) {
    start(fewHidden);
    ASSERT_TRUE(waitUntilAllAreMirrored());
    blank(true);
    ASSERT_TRUE(waitFor("the tray hides", [&] { return !strip(); }));
    blank(false);
    EXPECT_TRUE(staysTrue("it stays away", [&] { return !strip(); }, milliseconds(2000)));
    EXPECT_TRUE(waitUntilAllAreMirrored());
}

TEST_F(NotchedHost, aSecondScreenObeysTheSwitch) {
    auto arguments = fewHidden;
    arguments.insert(arguments.end(), {"--screens", "2"});
    start(arguments);
    ASSERT_TRUE(waitUntilAllAreMirrored());
    store(settings(false));
    EXPECT_TRUE(waitFor("the tray hides", [&] { return !strip(); }));
    store(settings(true));
    EXPECT_TRUE(waitUntilAllAreMirrored());
}

TEST_F(NotchedHost, withoutItemsThereIsNoTray) {
    start({"--items", "none", "--no-windows"});
    EXPECT_TRUE(staysTrue(
        "no tray", [&] { return !strip() && program_->isRunning(); }, milliseconds(2500)));
}

TEST_F(NotchedHost, sixtyItemsAreMirroredAsFarAsThereIsRoom) {
    start({"--items", many("wifi,volume,mail", 20), "--panel", "500,0,700,37", "--no-windows"});
    ASSERT_EQ(desktop_->icons().size(), 60U);
    ASSERT_TRUE(waitFor("icons are mirrored", [&] { return mirrored().value_or(0) > 0; }));
    const int menus = menusEnd();
    ASSERT_GT(menus, 0);
    const int leftmost = menus + 10;
    const auto leavesNoRoomForAnother = [&] {
        const auto shown = strip();
        const auto icons = hidden();
        const auto count = mirrored().value_or(0);
        return shown && count > 0 && count < icons.size() && shown->area.x >= leftmost &&
               shown->area.x - icons[icons.size() - count - 1].area.width < leftmost;
    };
    EXPECT_TRUE(waitFor("the tray fills its room", leavesNoRoomForAnother));
    EXPECT_TRUE(staysTrue("and stays so", leavesNoRoomForAnother, milliseconds(2500)));
}

TEST_F(NotchedHost, allItemsHiddenAreAllMirroredIfThereIsRoom) {
    start({"--items", "battery,wifi,volume,mail", "--panel", "900,0,500,37", "--no-windows"});
    ASSERT_TRUE(waitFor("all are hidden", [&] { return hidden().size() == 4; }));
    EXPECT_TRUE(waitUntilAllAreMirrored());
}

TEST_F(NotchedHost, anItemWiderThanTheRoomIsNotMirroredAndNothingElseBreaks) {
    // Between menus and notch there is less room than one icon takes.
    start({"--items", "battery,wifi,volume", "--panel", "260,0,1100,37", "--no-windows"});
    ASSERT_TRUE(waitFor("all are hidden", [&] { return hidden().size() == 3; }));
    EXPECT_TRUE(staysTrue(
        "no tray", [&] { return !strip() && program_->isRunning(); }, milliseconds(2500)));
}

TEST_F(NotchedHost, aNotchWiderThanHalfTheBarIsANotchLikeAnyOther) {
    start({"--items", "battery,wifi,volume,mail", "--panel", "600,0,780,37", "--no-windows"});
    EXPECT_TRUE(waitUntilAllAreMirrored());
}

} // namespace
} // namespace orrivane::e2e
