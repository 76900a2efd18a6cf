#include "Desktop.h"
#include "ProgramWindows.h"
#include "WaitFor.h"

#include <algorithm>
#include <filesystem>

namespace orrivane::e2e {
namespace {

/// The program's window on somebody else's panel, worked with the keyboard; what the panel makes of
/// it is seen by a second connection.
class ForeignHostTools : public testing::Test {
  protected:
    void bringUp(const std::string& host, bool arranges = false) {
        Desktop::Options options;
        options.host = host;
        desktop_.emplace(options);
        // Deaf to the bus, on which they would leave the tray for a watcher.
        for (const char* name : {"parcellite", "volumeicon", "nm-tray"})
            desktop_->startClient(name, BusAccess::none);
        desktop_->setDefault("OrrivaneSqueezeShown", true);
        desktop_->setDefault("OrrivaneArrangeExpanded", arranges);
        desktop_->cutOutIcons(0, 0);
    }
    void openWindow() {
        auto& program = desktop_->startProgram();
        // A second start only opens the window of a first one that is up.
        desktop_->waitForStrip();
        ASSERT_EQ(desktop_->launchAgain(), (ExitStatus{0, {}})) << program.log();
        constexpr int least = 300; // pixels either way
        window_ = windows().largeAtRest(least, least);
    }
    Observer& observer() { return desktop_->observer(); }
    ProgramWindows windows() { return {observer(), desktop_->program().pid()}; }
    std::optional<WindowState> dialog() { return windows().dialogOver(window_.id); }
    void confirm() {
        const auto asked = waitForValue<WindowState>("a question", [&] {
            const auto found = dialog();
            return found && observer().activeWindow() == found->id ? found : std::nullopt;
        });
        observer().tapKey(keyReturn);
        EXPECT_TRUE(waitFor("it is answered", [&] { return !dialog(); }));
        EXPECT_TRUE(waitFor("the window has the keyboard again",
                            [&] { return observer().activeWindow() == window_.id; }));
    }
    /// Moves the slider ten places down and presses "Apply & Restart".
    void squeezeToSix() {
        observer().tapKeyWith(keyShift, keyTab, 9);
        observer().tapKey(keyLeft, 10);
        observer().tapKey(keyTab, 2);
        observer().tapKey(keySpace);
        confirm();
    }
    void reset() {
        observer().tapKey(keyTab);
        observer().tapKey(keySpace);
        confirm();
    }
    /// Pixels from one icon to the next, the same for all; 0 while they are not.
    int pitch() {
        const auto icons = desktop_->foreignIcons();
        if (icons.size() != 3)
            return 0;
        const int first = icons[1].area.x - icons[0].area.x;
        return icons[2].area.x - icons[1].area.x == first ? first : 0;
    }
    std::vector<std::string> order() {
        std::vector<std::string> names;
        for (const auto& icon : desktop_->foreignIcons())
            names.push_back(icon.instanceName);
        return names;
    }

    /// The panel's own settings of its tray, as its tool prints them.
    std::string xfceSettings() {
        auto& query = desktop_->start(
            {"xfconf-query", "-c", "xfce4-panel", "-p", "/plugins/plugin-2", "-l", "-v"},
            desktop_->environment("host"));
        EXPECT_EQ(query.wait(defaultBound), (ExitStatus{0, {}})) << query.log();
        return query.log();
    }

    std::optional<Desktop> desktop_;
    WindowState window_;
};

TEST_F(ForeignHostTools, tint2sGapClosesAndItsFileComesBackByteForByte) {
    if (const auto missing = missingPrograms({"tint2", "parcellite", "volumeicon", "nm-tray"});
        !missing.empty())
        GTEST_SKIP() << missing;
    bringUp("tint2");
    const auto file = desktop_->directory() + "/host/.config/tint2/tint2rc";
    // An odd file: a comment, another line's end, and none at the end.
    const auto own = readFile(file) + "# systray_padding = 9 9 9\r\n\n# \xff last";
    writeFile(file, own);
    ASSERT_EQ(pitch(), 30);
    const pid_t panel = desktop_->host().pid();
    openWindow();
    if (HasFatalFailure())
        return;

    squeezeToSix();
    EXPECT_TRUE(waitFor("the icons touch", [&] { return pitch() == 24; })) << pitch();
    auto expected = own;
    const std::string line = "systray_padding = 0 0 6";
    expected.replace(expected.find(line), line.size(), "systray_padding = 0 0 0");
    EXPECT_EQ(readFile(file), expected);

    reset();
    EXPECT_TRUE(waitFor("the gap is back", [&] { return pitch() == 30; })) << pitch();
    EXPECT_EQ(readFile(file), own);
    EXPECT_TRUE(desktop_->host().isRunning());
    EXPECT_EQ(desktop_->host().pid(), panel);
}

class XfcePanelTools : public ForeignHostTools {
  protected:
    void SetUp() override {
        if (const auto missing = missingPrograms(
                {"xfce4-panel", "xfconf-query", "parcellite", "volumeicon", "nm-tray"});
            !missing.empty())
            GTEST_SKIP() << missing;
    }
};

TEST_F(XfcePanelTools, theIconsComeCloserAndThePanelsSettingsComeBack) {
    bringUp("xfce4-panel");
    ASSERT_EQ(pitch(), 37);
    const auto own = xfceSettings();
    openWindow();
    if (HasFatalFailure())
        return;

    squeezeToSix();
    EXPECT_TRUE(waitFor("the icons stand closer", [&] { return pitch() == 26; })) << pitch();
    for (const auto& icon : desktop_->foreignIcons())
        EXPECT_EQ(icon.area.width, 24);
    EXPECT_NE(xfceSettings(), own);

    reset();
    EXPECT_TRUE(waitFor("they stand as before", [&] { return pitch() == 37; })) << pitch();
    EXPECT_EQ(xfceSettings(), own);
}

TEST_F(XfcePanelTools, aTileTakenToTheRightEndTakesTheRealIconThere) {
    bringUp("xfce4-panel", true);
    auto expected = order();
    ASSERT_EQ(expected.size(), 3U);
    std::rotate(expected.begin(), expected.begin() + 1, expected.end());
    const auto pointer = observer().pointer();
    openWindow();
    if (HasFatalFailure())
        return;

    // Past the two switches and the list's own, to the leftmost tile.
    observer().tapKey(keyTab, 3);
    observer().tapKeyWith(keyControl, keyRight, 2);
    EXPECT_TRUE(waitFor("the panel has the new order", [&] { return order() == expected; }))
        << testing::PrintToString(order());
    EXPECT_EQ(observer().pointer(), pointer) << "the panel's list needs no drag";
}

} // namespace
} // namespace orrivane::e2e
