#include "AppDelegateFixture.h"

#include <Orrivane/MainView.h>
#include <Orrivane/MoveEngine.h>

#include <tests/support/ViewReading.h>

#include <algorithm>

namespace orrivane {
namespace {

/// The delegate with the main view itself in its popover and its window.
struct AppDelegateMainViewTest : AppDelegateFixture {
    AppDelegateMainViewTest() {
        const MainView::Services services{captures, strip, updates, notifications,
                                          ItemMover{[this](StatusItemWindow item, double toX) {
                                              return MoveEngine::move(item, toX, shell.eventPoster,
                                                                      desktop.log);
                                          }}};
        delegate = std::make_unique<AppDelegate>(
            desktop.platform(), shell.platform(),
            AppDelegate::Services{captures, strip, updates, notifications},
            [this, services](bool inWindow, std::function<void(const View&)> setRoot) {
                return MainView::create(inWindow, desktop.platform(), shell.platform(), services,
                                        std::move(setRoot));
            });
        launch();
        desktop.loop.runUntilIdle();
    }

    [[nodiscard]] const View& popover() const { return *shell.popover.root; }
    [[nodiscard]] const View& window() const { return *shell.mainWindow.root; }
    static void measure(const View& root, double height) {
        std::get<VerticalScroll>(root.node).contentHeightChanged.run(height);
    }
};

TEST_F(AppDelegateMainViewTest, theButtonInThePopoverBringsTheWindowInItsPlace) {
    shell.statusBar.click();
    ASSERT_TRUE(shell.popover.shown);
    reading::press(popover(), "Open Window");
    EXPECT_FALSE(shell.popover.shown);
    EXPECT_TRUE(shell.mainWindow.visible);
    EXPECT_EQ(desktop.workspace.activations, 1);
    EXPECT_FALSE(reading::isShown<Button>(window(), "Open Window"));
}

TEST_F(AppDelegateMainViewTest, theWindowIsFittedToItsOwnContentAndNotToThePopovers) {
    measure(popover(), 500);
    EXPECT_TRUE(shell.mainWindow.animatedFrames.empty());
    measure(window(), 500);
    EXPECT_EQ(contentHeight(), 500);
}

TEST_F(AppDelegateMainViewTest, theSwitchInTheFooterTakesTheStatusItemAwayAndBack) {
    reading::flip(window(), "Menu bar icon", false);
    EXPECT_TRUE(item().removed);
    desktop.loop.runUntilIdle();
    reading::flip(window(), "Menu bar icon", true);
    EXPECT_EQ(itemCount(), 2U);
    EXPECT_FALSE(item().removed);
}

TEST_F(AppDelegateMainViewTest, anUpdateIsAnnouncedOnTheItemAndInBothMainViews) {
    shell.updater.delegate->willHandleShowingUpdate(false, "1.4");
    EXPECT_EQ(item().toolTip, "Orrivane 1.4 is available");
    desktop.loop.runUntilIdle();
    for (const auto* root : {&popover(), &window()}) {
        const auto words = reading::shownWords(*root);
        EXPECT_TRUE(std::ranges::count(words, "Version 1.4 is available") == 1);
    }
}

TEST_F(AppDelegateMainViewTest, popoverAndWindowEachHaveTheirOwnState) {
    reading::flip(popover(), "Tighten macOS icon spacing", true);
    desktop.loop.runUntilIdle();
    const auto slide = reading::onlyNode<Slider>(popover(), "Spacing").changed.run;
    slide(6);
    desktop.loop.runUntilIdle();
    EXPECT_EQ(reading::onlyNode<Slider>(popover(), "Spacing").value, 6);
    EXPECT_EQ(reading::onlyNode<Slider>(window(), "Spacing").value, 16);
}

} // namespace
} // namespace orrivane
