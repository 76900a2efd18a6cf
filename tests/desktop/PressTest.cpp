#include "Mirror.h"
#include "TestWindow.h"

namespace orrivane::e2e {
namespace {

struct Case {
    std::string host;
    std::string client;
};

/// One application under the notch, between others.
class Press : public testing::TestWithParam<Case> {
  protected:
    Press() {
        Desktop::Options options;
        options.host = GetParam().host;
        desktop_.emplace(options);
        client_ = &desktop_->startClient(GetParam().client);
        desktop_->startClient(GetParam().client == "volumeicon" ? "parcellite" : "volumeicon");
        desktop_->cutOutIcons(0, 1);
        mirror_.emplace(*desktop_);
        desktop_->startProgram();
        if (const auto right = mirror_->waitUntilRight(); !right)
            throw std::runtime_error(right.message());
    }

    [[nodiscard]] PixelPoint cell() { return mirror_->cellOf(client_->icon).centre(); }
    void clickCell() { desktop_->observer().click(cell(), client_->kind->menuButton); }
    [[nodiscard]] bool menuIsOpen() { return !desktop_->popupsOf(client_->icon).empty(); }
    testing::AssertionResult waitForMenu() {
        return waitFor("the application's own menu opens", [&] { return menuIsOpen(); });
    }
    /// Moves the notch by a pixel; only a tick can move the strip after it.
    testing::AssertionResult aTickPasses() {
        const PixelRect cutout = desktop_->observer().cutouts().at(0);
        desktop_->setCutout(cutout.x + 1, cutout.right() + 1);
        return mirror_->waitUntilRight();
    }

    std::optional<Desktop> desktop_;
    std::optional<Mirror> mirror_;
    DockedClient* client_ = nullptr;
};

TEST_P(Press, aClickOpensTheApplicationsMenuAndLeavesThePointer) {
    const auto place = cell();
    clickCell();
    ASSERT_TRUE(waitForMenu());
    EXPECT_EQ(desktop_->observer().pointer(), place);
    const auto menu = desktop_->popupsOf(client_->icon).front();
    EXPECT_EQ(desktop_->observer().pidOf(menu.id), client_->process.pid());
    desktop_->closeMenu(menu);
}

TEST_P(Press, theMenuStaysAboveTheStripAndAClickAfterItClosedOpensItAgain) {
    clickCell();
    ASSERT_TRUE(waitForMenu());
    const auto isAboveStrip = [&] {
        const auto strip = desktop_->strip();
        bool seenStrip = false;
        for (const auto& window : desktop_->observer().topLevels()) {
            seenStrip = seenStrip || (strip && window.id == strip->id);
            for (const auto& menu : desktop_->popupsOf(client_->icon))
                if (window.id == menu.id)
                    return seenStrip;
        }
        return false;
    };
    EXPECT_TRUE(
        staysTrue("the menu is above the strip", isAboveStrip, std::chrono::milliseconds(3900)));
    desktop_->closeMenu(desktop_->popupsOf(client_->icon).front());
    ASSERT_TRUE(waitFor("the menu is closed", [&] { return !menuIsOpen(); }));
    ASSERT_TRUE(aTickPasses());
    clickCell();
    ASSERT_TRUE(waitForMenu()) << "the tick after closing must have noticed";
    desktop_->closeMenu(desktop_->popupsOf(client_->icon).front());
}

INSTANTIATE_TEST_SUITE_P(Applications, Press,
                         testing::Values(Case{"trayer", "parcellite"},
                                         Case{"trayer", "xfce4-clipman"},
                                         Case{"trayer", "kteatime"}, Case{"trayer", "qjackctl"},
                                         Case{"tint2", "parcellite"}, Case{"tint2", "volumeicon"},
                                         Case{"tint2", "nm-tray"}, Case{"lxpanel", "kteatime"},
                                         Case{"xfce4-panel", "parcellite"},
                                         Case{"mate-panel", "parcellite"}),
                         [](const auto& test) {
                             std::string name = test.param.host + "_" + test.param.client;
                             for (char& c : name)
                                 c = c == '-' ? '_' : c;
                             return name;
                         });

class PressOnTrayer : public testing::Test {
  protected:
    PressOnTrayer() { desktop_.emplace(Desktop::Options{}); }
    std::optional<Desktop> desktop_;
};

TEST_F(PressOnTrayer, anIconHalfAPixelUnderTheNotchAndMostlyUnderTheStripCanBePressed) {
    auto& client = desktop_->startClient("parcellite");
    const auto icon = desktop_->settledIcons().at(0);
    // The user's file takes fractions, which the property cannot.
    const double left = icon.area.right() - 0.5;
    auto& setting =
        desktop_->start({Desktop::programPath(), "--set-notch", std::to_string(left) + ",0,180,37"},
                        desktop_->environment("orrivane"));
    ASSERT_EQ(setting.wait(defaultBound), (ExitStatus{0, {}})) << setting.log();
    desktop_->observer().setCutouts({{icon.area.right(), 0, 180, 37}}); // only for strip()
    desktop_->observer().deleteProperty(desktop_->observer().root(), "_ORRIVANE_DISPLAY_CUTOUT");
    desktop_->startProgram();
    const auto strip = waitForValue<WindowState>("the strip shows", [&] {
        std::optional<WindowState> found;
        for (const auto& window : desktop_->programWindows())
            if (window.isViewable() && window.overrideRedirect && window.area.width > 8)
                found = window;
        return found;
    });
    EXPECT_TRUE(strip.area.contains(icon.area.centre())) << strip.area << icon.area;
    desktop_->observer().click(strip.area.centre());
    EXPECT_TRUE(
        waitFor("the menu opens", [&] { return !desktop_->popupsOf(client.icon).empty(); }));
    desktop_->closeMenu(desktop_->popupsOf(client.icon).front());
    // The strip takes clicks again.
    EXPECT_EQ(desktop_->observer().leafAt(strip.area.centre()), strip.id);
}

TEST_F(PressOnTrayer, anIconUnderAnotherWindowIsNotPressed) {
    auto& client = desktop_->startClient("parcellite");
    desktop_->startClient("volumeicon");
    desktop_->cutOutIcons(0, 1);
    Mirror mirror(*desktop_);
    auto& program = desktop_->startProgram();
    ASSERT_TRUE(mirror.waitUntilRight());
    const auto icon = desktop_->observer().window(client.icon);
    ASSERT_TRUE(icon);
    TestWindow cover(desktop_->observer(),
                     {.area = icon->area, .overrideRedirect = true, .name = "cover"});
    cover.map();
    cover.raise();
    desktop_->observer().click(mirror.cellOf(client.icon).centre());
    EXPECT_TRUE(waitFor("the refusal is logged", [&] {
        return program.log().find("Orrivane: AXPress failed for Parcellite (pid " +
                                  std::to_string(client.process.pid()) + "): AXError -25204") !=
               std::string::npos;
    }));
    EXPECT_TRUE(desktop_->popupsOf(client.icon).empty());
}

TEST_F(PressOnTrayer, theStripNeverTakesTheKeyboard) {
    desktop_->startClient("parcellite");
    desktop_->cutOutIcons(0, 0);
    Mirror mirror(*desktop_);
    TestWindow front(desktop_->observer(), {.area = {100, 300, 400, 300}, .name = "front"});
    front.map();
    ASSERT_TRUE(waitFor("the window is active",
                        [&] { return desktop_->observer().activeWindow() == front.id(); }));
    desktop_->startProgram();
    ASSERT_TRUE(mirror.waitUntilRight());
    EXPECT_EQ(desktop_->observer().activeWindow(), front.id());
    const auto icon = desktop_->foreignIcons().at(0);
    desktop_->observer().click(mirror.cellOf(icon.id).centre());
    ASSERT_TRUE(waitFor("the menu opens", [&] { return !desktop_->popupsOf(icon.id).empty(); }));
    desktop_->closeMenu(desktop_->popupsOf(icon.id).front());
    EXPECT_TRUE(waitFor("the window is active",
                        [&] { return desktop_->observer().activeWindow() == front.id(); }));
}

TEST_F(PressOnTrayer, aTooltipNamesTheApplicationWhileTheProgramIsInactive) {
    desktop_->startClient("parcellite");
    desktop_->cutOutIcons(0, 0);
    Mirror mirror(*desktop_);
    desktop_->startProgram();
    ASSERT_TRUE(mirror.waitUntilRight());
    const auto cell = mirror.cellOf(desktop_->foreignIcons().at(0).id).centre();
    desktop_->observer().movePointer({cell.x - 2, cell.y});
    desktop_->observer().movePointer(cell);
    EXPECT_TRUE(waitFor("a tooltip shows", [&] {
        for (const auto& window : desktop_->programWindows())
            if (window.isViewable() && window.type == "_NET_WM_WINDOW_TYPE_TOOLTIP")
                return true;
        return false;
    }));
}

} // namespace
} // namespace orrivane::e2e
