#include <tests/unit/MainViewFixture.h>

namespace orrivane {
namespace {

using namespace reading;
using MainViewActionsTest = MainViewFixture;

TEST_F(MainViewActionsTest, openWindowPostsItsNotificationAndNothingElse) {
    create();
    press("Open Window");
    EXPECT_EQ(posts, (std::vector<Post>{{"OrrivaneShowWindow", {}}}));
}

TEST_F(MainViewActionsTest, grantAsksTheSystemThenRefreshes) {
    world.screenCapture.accessGranted = false;
    world.screenCapture.requestGrantsAccess = true;
    create();
    press("Grant…");
    EXPECT_EQ(world.screenCapture.requestCalls, 1);
    EXPECT_EQ(censuses(), 1U);
    EXPECT_TRUE(view->state().screenGranted());
    EXPECT_FALSE(isShown<Button>("Grant…"));
}

TEST_F(MainViewActionsTest, eachOfTheSettingsButtonsOpensItsOwnPane) {
    create();
    std::vector<std::function<void()>> buttons;
    for (const auto* each : all<Button>(root))
        if (words(*each) == "Open System Settings")
            buttons.push_back(std::get<Button>(each->node).action.run);
    ASSERT_EQ(buttons.size(), 2U);
    for (const auto& button : buttons)
        button();
    ASSERT_EQ(world.workspace.opened.size(), 2U);
    EXPECT_TRUE(world.workspace.opened[0].ends_with("Privacy_ScreenCapture"));
    EXPECT_TRUE(world.workspace.opened[1].ends_with("Privacy_Accessibility"));
}

TEST_F(MainViewActionsTest, theTraySwitchStartsAndStopsTheLoop) {
    createAndAppear();
    strip.start();
    settle();
    EXPECT_EQ(world.loop.repeatingTimerCount(), 1U);
    flip("Show hidden icons beside the notch", false);
    EXPECT_FALSE(strip.enabled());
    EXPECT_FALSE(isOn("Show hidden icons beside the notch"));
    EXPECT_EQ(world.loop.repeatingTimerCount(), 0U);
    flip("Show hidden icons beside the notch", true);
    EXPECT_TRUE(strip.enabled());
    EXPECT_EQ(world.loop.repeatingTimerCount(), 1U);
}

TEST_F(MainViewActionsTest, theExternalDisplaySwitchIsStored) {
    create();
    flip("Keep mirroring on the notched screen while external displays are connected", false);
    EXPECT_FALSE(world.userDefaults.stored.at("OrrivaneMirrorOnExternal"));
    EXPECT_FALSE(
        isOn("Keep mirroring on the notched screen while external displays are connected"));
}

TEST_F(MainViewActionsTest, theStatusItemSwitchIsStoredBeforeItIsPosted) {
    create();
    std::vector<bool> storedWhenPosted;
    observations.push_back(notifications.addObserver(
        NotificationName::orrivaneStatusItemChanged, [&](const UserInfo&) {
            storedWhenPosted.push_back(world.userDefaults.boolForKey("OrrivaneShowStatusItem"));
        }));
    flip("Menu bar icon", false);
    flip("Menu bar icon", true);
    EXPECT_EQ(storedWhenPosted, (std::vector{false, true}));
    EXPECT_EQ(posts, (std::vector<Post>{{"OrrivaneStatusItemChanged", {}},
                                        {"OrrivaneStatusItemChanged", {}}}));
}

TEST_F(MainViewActionsTest, bothUpdateButtonsAskForACheck) {
    create();
    press("Check for Updates…");
    EXPECT_EQ(shell.updater.checks, 1);
    updates.willHandleShowingUpdate(false, "1.4");
    settle();
    press("Update to 1.4…");
    EXPECT_EQ(shell.updater.checks, 2);
}

TEST_F(MainViewActionsTest, theAutomaticCheckSwitchIsTheUpdatersSetting) {
    create();
    updates.start();
    flip("Check automatically", false);
    EXPECT_FALSE(shell.updater.automaticChecks);
    EXPECT_FALSE(isOn("Check automatically"));
}

TEST_F(MainViewActionsTest, aWriteThatIsLostIsShownAsLost) {
    create();
    const auto before = renderings;
    flip("Check automatically", true);
    EXPECT_GT(renderings, before);
    EXPECT_FALSE(isOn("Check automatically"));
}

TEST_F(MainViewActionsTest, launchAtLoginIsAppliedAndShownEvenWhenItFails) {
    create();
    flip("Launch at login", true);
    EXPECT_EQ(count("registerItem"), 1U);
    EXPECT_TRUE(isOn("Launch at login"));
    flip("Launch at login", false);
    EXPECT_EQ(count("unregisterItem"), 1U);
    EXPECT_FALSE(isOn("Launch at login"));
    shell.loginService.registerError = "no";
    flip("Launch at login", true);
    EXPECT_TRUE(isOn("Launch at login"));
}

TEST_F(MainViewActionsTest, refreshIsDisabledWhileItRuns) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    create();
    press("Refresh");
    EXPECT_FALSE(only<Button>(root, "Refresh").isEnabled);
    EXPECT_EQ(censuses(), 1U);
    world.loop.advance(0.6);
    EXPECT_TRUE(only<Button>(root, "Refresh").isEnabled);
}

TEST_F(MainViewActionsTest, refreshAndGrantLeaveTheAccessibilityPermissionToTheCycle) {
    create();
    press("Refresh");
    press("Grant…");
    EXPECT_EQ(censuses(), 2U);
    EXPECT_EQ(count("isTrusted"), 0U);
}

TEST_F(MainViewActionsTest, quitEndsTheProgram) {
    create();
    press("Quit");
    EXPECT_EQ(world.workspace.terminations, 1);
}

TEST_F(MainViewActionsTest, theContentHeightIsPostedOnceAChangeInTheWindow) {
    create(true);
    const auto changed = std::get<VerticalScroll>(root.node).contentHeightChanged.run;
    changed(700);
    changed(700);
    changed(712.5);
    changed(712.75);
    EXPECT_EQ(posts, (std::vector<Post>{{"OrrivaneContentHeight", {{"height", 700}}},
                                        {"OrrivaneContentHeight", {{"height", 712.5}}},
                                        {"OrrivaneContentHeight", {{"height", 712.75}}}}));
}

TEST_F(MainViewActionsTest, thePopoverPostsNoContentHeight) {
    create(false);
    std::get<VerticalScroll>(root.node).contentHeightChanged.run(700);
    EXPECT_TRUE(posts.empty());
}

TEST_F(MainViewActionsTest, whatItPostsIsAboutNobodyInParticular) {
    create(true);
    int aboutTheView = 0;
    for (const auto name :
         {NotificationName::orrivaneShowWindow, NotificationName::orrivaneStatusItemChanged,
          NotificationName::orrivaneContentHeight})
        observations.push_back(
            notifications.addObserver(name, [&](const UserInfo&) { ++aboutTheView; }, view.get()));
    press("Open Window");
    flip("Menu bar icon", false);
    std::get<VerticalScroll>(root.node).contentHeightChanged.run(700);
    EXPECT_EQ(posts.size(), 3U);
    EXPECT_EQ(aboutTheView, 0);
}

TEST_F(MainViewActionsTest, theArrangeSectionIsReadWhenItOpensAndEveryTimeItDoes) {
    createAndAppear();
    const auto before = censuses();
    const auto toggle = [&](bool open) {
        const auto label = open ? "Show icon list" : "Hide icon list";
        const auto changed = onlyNode<Disclosure>(root, label).changed.run;
        changed(open);
        settle();
    };
    toggle(true);
    EXPECT_TRUE(world.userDefaults.stored.at("OrrivaneArrangeExpanded"));
    EXPECT_EQ(censuses(), before + 1);
    EXPECT_TRUE(onlyNode<Disclosure>(root, "Hide icon list").isExpanded);
    EXPECT_EQ(all<Tile>(root).size(), 4U);
    toggle(false);
    EXPECT_EQ(censuses(), before + 1);
    EXPECT_FALSE(onlyNode<Disclosure>(root, "Show icon list").isExpanded);
    toggle(true);
    EXPECT_EQ(censuses(), before + 2);
}

TEST_F(MainViewActionsTest, aSectionThatIsOpenAlreadyIsReadOnAppearance) {
    world.userDefaults.stored = {{"OrrivaneArrangeExpanded", true}};
    create();
    settle();
    EXPECT_EQ(censuses(), 0U);
    appear();
    EXPECT_EQ(censuses(), 2U); // its own and the first refresh
    EXPECT_EQ(all<Tile>(root).size(), 4U);
}

TEST_F(MainViewActionsTest, aSectionThatTheOtherScreenOpensOpensHereToo) {
    createAndAppear();
    const auto before = censuses();
    world.userDefaults.changeElsewhere("OrrivaneArrangeExpanded", true);
    settle();
    EXPECT_TRUE(onlyNode<Disclosure>(root, "Hide icon list").isExpanded);
    EXPECT_EQ(censuses(), before + 1);
}

TEST_F(MainViewActionsTest, actionsOfAViewThatIsGoneDoNothing) {
    create();
    view.reset();
    press("Quit");
    press("Apply");
    flip("Launch at login", true);
    EXPECT_EQ(world.workspace.terminations, 0);
    EXPECT_EQ(count("setValue"), 0U);
    EXPECT_EQ(count("registerItem"), 0U);
}

} // namespace
} // namespace orrivane
