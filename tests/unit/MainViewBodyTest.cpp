#include <tests/unit/MainViewFixture.h>

#include <algorithm>

namespace orrivane {
namespace {

using namespace reading;
using Words = std::vector<std::string>;

struct MainViewBodyTest : MainViewFixture {
    [[nodiscard]] std::vector<MenuBarPreview> previews() const {
        return {{view->state().census()->notch, view->state().previewIcons(), std::nullopt},
                {view->state().census()->notch, view->state().previewIcons(),
                 static_cast<int>(view->state().sliderValue())}};
    }
    [[nodiscard]] const View& text(std::string_view words) const { return only<Text>(root, words); }
};

TEST_F(MainViewBodyTest, readsTopToBottomInOneOrder) {
    world.screenCapture.accessGranted = false;
    world.accessibility.trusted = false;
    world.userDefaults.stored = {{"OrrivaneArrangeExpanded", true}, {"OrrivaneSqueezeShown", true}};
    createAndAppear();
    updates.willHandleShowingUpdate(false, "1.4");
    settle();
    const Words expected{
        "Orrivane",
        "The notch is hiding 2 icons",
        "Open Window",
        "Screen Recording permission needed",
        "Without Screen Recording access, the preview shows placeholder tiles instead of real menu "
        "bar icons.",
        "Grant…",
        "Open System Settings",
        "Now",
        "Current",
        "Preview",
        "At spacing 16",
        "→ all icons would fit",
        "Orrivane Notch",
        "Show hidden icons beside the notch",
        "Hidden icons appear in a small tray left of the notch. Click a mirrored icon to open the "
        "real one.",
        "Keep mirroring on the notched screen while external displays are connected",
        "Accessibility permission is required to click mirrored icons.",
        "Open System Settings",
        "Arrange",
        "Hide icon list",
        "Same order as your menu bar. Drag an icon — the line shows exactly where it will land.",
        "Moves use a simulated ⌘-drag on the real menu bar. Icons hidden under the notch (orange "
        "dot) may not respond — drag a visible icon left of them instead.",
        "Squeeze",
        "Tighten macOS icon spacing",
        "A separate macOS tweak, independent of Orrivane's notch tray: tightens the system's own "
        "icon spacing. Modest effect — about two icons at maximum.",
        "Spacing",
        "Applied: system default",
        "Without a restart, changes take effect at next login.",
        "Apply",
        "Apply & Restart Menu Bar",
        "Reset to Default",
        "Update to 1.4…",
        "Check automatically",
        "Version 1.4 is available",
        "Version 1.2.0 (build 12)",
        "Launch at login",
        "Menu bar icon",
        "Refresh",
        "Quit"};
    EXPECT_EQ(shownWords(root), expected);
}

TEST_F(MainViewBodyTest, showsTheLeastWhenAllIsWell) {
    createAndAppear(true);
    world.ownWindows.mainViewWindowVisible = true;
    world.loop.advance(2);
    const Words expected{
        "Orrivane",
        "The notch is hiding 2 icons",
        "Now",
        "Current",
        "Preview",
        "At spacing 16",
        "→ all icons would fit",
        "Orrivane Notch",
        "Show hidden icons beside the notch",
        "Hidden icons appear in a small tray left of the notch. Click a mirrored icon to open the "
        "real one.",
        "Keep mirroring on the notched screen while external displays are connected",
        "Arrange",
        "Show icon list",
        "Squeeze",
        "Tighten macOS icon spacing",
        "A separate macOS tweak, independent of Orrivane's notch tray: tightens the system's own "
        "icon spacing. Modest effect — about two icons at maximum.",
        "Check for Updates…",
        "Check automatically",
        "Version 1.2.0 (build 12)",
        "Launch at login",
        "Menu bar icon",
        "Refresh",
        "Quit"};
    EXPECT_EQ(shownWords(root), expected);
}

TEST_F(MainViewBodyTest, isAColumnThatScrolls) {
    create();
    EXPECT_TRUE(std::holds_alternative<VerticalScroll>(root.node));
}

TEST_F(MainViewBodyTest, keepsItsShapeWhateverItsState) {
    const auto shape = [](const View& screen) {
        std::vector<std::size_t> kinds;
        for (const auto* each : everything(screen))
            if (each->key == 0)
                kinds.push_back(each->node.index());
        return kinds;
    };
    world.screenCapture.accessGranted = false;
    create();
    const auto before = shape(root);
    world.userDefaults.stored = {{"OrrivaneArrangeExpanded", true}, {"OrrivaneSqueezeShown", true}};
    appear();
    EXPECT_EQ(shape(root), before);
    world.screenCapture.accessGranted = true;
    updates.willHandleShowingUpdate(false, "1.4");
    world.loop.advance(10);
    EXPECT_EQ(shape(root), before);
}

TEST_F(MainViewBodyTest, beforeTheFirstCensusItIsScanning) {
    create();
    const auto& line = only<Label>(root, "Scanning the menu bar…");
    EXPECT_EQ(std::get<Label>(line.node).symbol, "ellipsis.circle");
    EXPECT_EQ(line.color, ColorRole::secondary);
    EXPECT_EQ(line.font, FontRole::callout);
    EXPECT_TRUE(isShown<Label>("Scanning the menu bar…"));
    EXPECT_EQ(std::ranges::count_if(
                  shown(root),
                  [](const View* each) { return std::holds_alternative<Label>(each->node); }),
              1);
}

TEST_F(MainViewBodyTest, theDiagnosticLineHasSymbolAndColour) {
    createAndAppear();
    const auto& line = only<Label>(root, "The notch is hiding 2 icons");
    EXPECT_EQ(std::get<Label>(line.node).symbol, "exclamationmark.triangle");
    EXPECT_EQ(line.color, ColorRole::red);
    EXPECT_EQ(line.font, FontRole::callout);
}

TEST_F(MainViewBodyTest, theDiagnosticLineCountsWhatTheStripMirrors) {
    world.accessibility.addApplication(1, "Editor");
    world.accessibility.menuBarOwner = world.accessibility.running[0];
    // From the menus to the notch there is room for one of the two.
    world.accessibility.setMenuBar(1, Rect{{0, 0}, {1512, 24}}, {Rect{{0, 0}, {600, 24}}});
    strip.start();
    settle();
    ASSERT_EQ(strip.mirroredCount(), 1);
    createAndAppear();
    const auto& first = only<Label>(root, "The notch is hiding 2 icons — Orrivane is showing 1");
    const auto& second = only<Label>(root, "1 icon is not shown anywhere");
    EXPECT_EQ(first.color, ColorRole::green);
    EXPECT_EQ(second.color, ColorRole::red);
    EXPECT_EQ(std::get<Label>(second.node).symbol, "exclamationmark.triangle");
    EXPECT_TRUE(isShown<Label>("1 icon is not shown anywhere"));
}

TEST_F(MainViewBodyTest, onlyThePopoverOffersTheWindow) {
    create(false);
    const auto& button = only<Button>(root, "Open Window");
    EXPECT_TRUE(isShown<Button>("Open Window"));
    EXPECT_EQ(std::get<Button>(button.node).symbol, "macwindow");
    EXPECT_EQ(button.tooltip, "Open Orrivane in its own resizable window");
    create(true);
    EXPECT_FALSE(isShown<Button>("Open Window"));
}

TEST_F(MainViewBodyTest, thePermissionBannerIsThereOnlyWithoutThePermission) {
    world.screenCapture.accessGranted = false;
    createAndAppear();
    EXPECT_TRUE(isShown<Text>("Screen Recording permission needed"));
    EXPECT_TRUE(isShown<Button>("Grant…"));
    const auto symbols = all<Label>(root);
    EXPECT_TRUE(std::ranges::any_of(symbols, [](const View* each) {
        return std::get<Label>(each->node) == Label{"", "eye.slash"};
    }));
    world.screenCapture.accessGranted = true;
    world.loop.advance(2);
    EXPECT_FALSE(isShown<Text>("Screen Recording permission needed"));
    EXPECT_FALSE(isShown<Button>("Grant…"));
}

TEST_F(MainViewBodyTest, twoPreviewsShowTheBarAsItIsAndAtTheSlidersSpacing) {
    shell.globalPreferences.values = {{"NSStatusItemSpacing", 6}};
    createAndAppear();
    const auto canvases = all<Canvas>(root);
    ASSERT_EQ(canvases.size(), 2U);
    EXPECT_EQ(*canvases[0], previews()[0].body());
    EXPECT_EQ(*canvases[1], previews()[1].body());
    EXPECT_EQ(previews()[1].simulatedSpacing, 6);
    EXPECT_EQ(all<Canvas>(section("Now")).size(), 1U);
    EXPECT_EQ(all<Canvas>(section("Preview")).size(), 1U);
    EXPECT_EQ(text("Current").font, FontRole::caption);
    EXPECT_TRUE(isShown<Text>("At spacing 6"));
}

TEST_F(MainViewBodyTest, theSpacingIsWrittenWithoutItsFraction) {
    create();
    view->state().setSliderValue(8.9);
    settle();
    EXPECT_TRUE(isShown<Text>("At spacing 8"));
    EXPECT_EQ(*all<Canvas>(root)[1], (MenuBarPreview{std::nullopt, {}, 8}.body()));
}

TEST_F(MainViewBodyTest, aVerdictThatAllFitsIsGreenAndMedium) {
    createAndAppear();
    const auto& verdict = text("→ all icons would fit");
    EXPECT_EQ(verdict.color, ColorRole::green);
    EXPECT_EQ(verdict.font, FontRole::caption);
    EXPECT_EQ(verdict.weight, FontWeight::medium);
}

TEST_F(MainViewBodyTest, aVerdictCountsWhatThePreviewMarks) {
    addItem(15, 850, 300);
    addItem(16, 1150, 300);
    createAndAppear();
    // The row begins 720 points left of the screen's right end, so two lie under the notch.
    const auto& verdict = text("→ would hide 2 icons");
    EXPECT_NE(verdict.color, ColorRole::green);
    EXPECT_EQ(verdict.font, FontRole::caption);
    EXPECT_EQ(MenuBarPreview::projectedEatenCount(previews()[1].notch, previews()[1].icons, 16), 2);
}

TEST_F(MainViewBodyTest, theVerdictIsThatOfTheSlidersSpacing) {
    addItem(15, 850, 300);
    addItem(16, 1150, 300);
    createAndAppear();
    EXPECT_TRUE(isShown<Text>("→ would hide 2 icons"));
    view->state().setSliderValue(8);
    settle();
    EXPECT_TRUE(isShown<Text>("→ would hide 1 icon"));
    view->state().setSliderValue(4);
    settle();
    EXPECT_TRUE(isShown<Text>("→ all icons would fit"));
    EXPECT_EQ(text("→ all icons would fit").color, ColorRole::green);
}

TEST_F(MainViewBodyTest, withoutACensusThePreviewsAreEmpty) {
    create();
    EXPECT_EQ(*all<Canvas>(root)[0], MenuBarPreview{}.body());
    EXPECT_TRUE(isShown<Text>("→ all icons would fit"));
}

TEST_F(MainViewBodyTest, theAccessibilityWarningIsThereOnlyWithoutThePermission) {
    create();
    EXPECT_FALSE(isShown<Text>("Accessibility permission is required to click mirrored icons."));
    world.accessibility.trusted = false;
    appear();
    EXPECT_TRUE(isShown<Text>("Accessibility permission is required to click mirrored icons."));
    const auto symbols = all<Label>(section("Orrivane Notch"));
    ASSERT_EQ(symbols.size(), 1U);
    EXPECT_EQ(std::get<Label>(symbols[0]->node), (Label{"", "exclamationmark.triangle"}));
    world.accessibility.trusted = true;
    world.loop.advance(2);
    EXPECT_FALSE(isShown<Text>("Accessibility permission is required to click mirrored icons."));
}

} // namespace
} // namespace orrivane
