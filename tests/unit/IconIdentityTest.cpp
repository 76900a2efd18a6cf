#include <Orrivane/IconIdentity.h>

#include <tests/support/ScriptedPlatform.h>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

using Descriptions = std::vector<ScreenDescription>;
using Owners = std::vector<IconOwner>;
using Frames = std::vector<std::optional<Rect>>;

struct IconIdentityTest : testing::Test {
    ScriptedPlatform world;
    ScriptedAccessibility& accessibility = world.accessibility;
    const Descriptions screens{ScriptedScreens::notched()};

    IconOwner ownerAt(double x, double width = 20, std::int32_t pid = 5) {
        return {accessibility.makeElement(pid), "Name", pid, Rect{{x, 0}, {width, 24}}};
    }
    static StatusItemWindow windowAt(double x, double width = 20) {
        return {1, Rect{{x, 0}, {width, 24}}, true, true};
    }
    static std::optional<double> midX(const std::optional<IconOwner>& owner) {
        return owner ? std::optional(owner->frame.midX()) : std::nullopt;
    }
};

TEST_F(IconIdentityTest, matchesByDistanceFromTheEndOfEquallyPlacedBars) {
    const Descriptions two{ScriptedScreens::plain({{0, 0}, {1000, 800}}),
                           ScriptedScreens::plain({{1000, 0}, {600, 800}})};
    const auto owner = IconIdentity::owner(windowAt(1580), Owners{ownerAt(980)}, two);
    EXPECT_EQ(midX(owner), 990);
}

TEST_F(IconIdentityTest, ofEqualDistancesTheFirstWins) {
    const Owners owners{ownerAt(105), ownerAt(95)};
    EXPECT_EQ(midX(IconIdentity::owner(windowAt(100), owners, screens)), 115);
}

TEST_F(IconIdentityTest, aStrictlyNearerOwnerReplacesAnEarlierOne) {
    const Owners owners{ownerAt(105), ownerAt(96)};
    EXPECT_EQ(midX(IconIdentity::owner(windowAt(100), owners, screens)), 106);
}

TEST_F(IconIdentityTest, aDistanceOfTwentyMatchesAndMoreDoesNot) {
    EXPECT_TRUE(IconIdentity::owner(windowAt(100), Owners{ownerAt(120)}, screens));
    EXPECT_FALSE(IconIdentity::owner(windowAt(100), Owners{ownerAt(120.0001)}, screens));
}

TEST_F(IconIdentityTest, iconsOfDifferentWidthsAreComparedByTheirMiddles) {
    const Owners owners{ownerAt(100, 60), ownerAt(114)};
    EXPECT_EQ(midX(IconIdentity::owner(windowAt(100), owners, screens)), 124);
}

TEST_F(IconIdentityTest, anEmptyOwnerListYieldsNoOwner) {
    EXPECT_FALSE(IconIdentity::owner(windowAt(100), Owners{}, screens));
}

TEST_F(IconIdentityTest, aPointBeyondTheScreensEdgeStillBelongsToIt) {
    const Descriptions two{ScriptedScreens::plain({{0, 0}, {1000, 800}}),
                           ScriptedScreens::plain({{2000, 0}, {500, 800}})};
    EXPECT_EQ(IconIdentity::barRightEdge({{2481, 0}, {20, 24}}, two), 2500);
    EXPECT_EQ(IconIdentity::barRightEdge({{2481.5, 0}, {20, 24}}, two), 1000);
    EXPECT_EQ(IconIdentity::barRightEdge({{1999, 0}, {20, 24}}, two), 2500);
    EXPECT_EQ(IconIdentity::barRightEdge({{1998.5, 0}, {20, 24}}, two), 1000);
}

TEST_F(IconIdentityTest, aRectangleFortyPointsBelowTheTopIsInNoBar) {
    const Descriptions two{ScriptedScreens::plain({{0, 0}, {1000, 800}}),
                           ScriptedScreens::plain({{1000, -100}, {500, 800}})};
    EXPECT_EQ(IconIdentity::barRightEdge({{1100, 139.9}, {20, 24}}, two), 1500);
    EXPECT_EQ(IconIdentity::barRightEdge({{1100, 140}, {20, 24}}, two), 1000);
    EXPECT_EQ(IconIdentity::barRightEdge({{1100, 60}, {20, 24}}, two), 1000);
}

TEST_F(IconIdentityTest, aRectangleOfNegativeExtentLiesInTheBarOfTheStandardisedOne) {
    const Descriptions two{ScriptedScreens::plain({{0, 0}, {1000, 800}}),
                           ScriptedScreens::plain({{1000, 0}, {500, 800}})};
    EXPECT_EQ(IconIdentity::barRightEdge({{1501, 60}, {-20, -24}}, two), 1500);
    EXPECT_EQ(IconIdentity::barRightEdge({{1501, 64}, {-20, -24}}, two), 1000);
}

TEST_F(IconIdentityTest, withoutScreensTheBarEndsWithTheRectangle) {
    EXPECT_EQ(IconIdentity::barRightEdge({{10, 0}, {20, 24}}, {}), 30);
}

TEST_F(IconIdentityTest, ownersComeInSystemAndChildOrder) {
    accessibility.addApplication(0, "No process");
    accessibility.addApplication(7, "Seven");
    accessibility.addApplication(3, "Three");
    accessibility.addStatusItem(7, {{50, 0}, {20, 24}});
    accessibility.addStatusItem(7, {{10, 0}, {20, 24}});
    accessibility.addStatusItem(3, {{30, 0}, {20, 24}});
    accessibility.addStatusItem(0, {{70, 0}, {20, 24}});
    accessibility.addApplication(9, "Without items");
    const auto owners = IconIdentity::resolveOwners(accessibility);
    ASSERT_EQ(owners.size(), 3U);
    EXPECT_EQ(owners[0].frame.minX(), 50);
    EXPECT_EQ(owners[1].frame.minX(), 10);
    EXPECT_EQ(owners[2].appName, "Three");
    EXPECT_EQ(owners[2].pid, 3);
    for (const auto& timeout : accessibility.timeouts)
        EXPECT_EQ(timeout.seconds, 0.3F);
    EXPECT_EQ(accessibility.timeouts.size(), 3U);
}

TEST_F(IconIdentityTest, aFrameIsReadFromPositionAndSizeToo) {
    accessibility.addApplication(7, "Seven");
    const auto both = accessibility.addStatusItem(7, {{1, 2}, {3, 4}});
    const auto positionOnly = accessibility.addStatusItem(7, {{1, 2}, {3, 4}});
    const auto wrongType = accessibility.addStatusItem(7, {{1, 2}, {3, 4}});
    accessibility.removeAttribute(both, "AXFrame");
    accessibility.setAttribute(both, "AXPosition", Point{30, 1});
    accessibility.setAttribute(both, "AXSize", Size{20, 24});
    accessibility.removeAttribute(positionOnly, "AXFrame");
    accessibility.setAttribute(positionOnly, "AXPosition", Point{60, 1});
    accessibility.removeAttribute(positionOnly, "AXSize");
    accessibility.setAttribute(wrongType, "AXFrame", std::string("60"));
    accessibility.removeAttribute(wrongType, "AXPosition");
    const auto owners = IconIdentity::resolveOwners(accessibility);
    ASSERT_EQ(owners.size(), 1U);
    EXPECT_EQ(owners[0].frame, (Rect{{30, 1}, {20, 24}}));
}

TEST_F(IconIdentityTest, positionAndSizeOfTheirTypesStandInForAFrameOfAnother) {
    accessibility.addApplication(7, "Seven");
    const auto add = [&](AttributeValue frame, AttributeValue position, AttributeValue size) {
        const auto item = accessibility.addStatusItem(7, {});
        accessibility.setAttribute(item, "AXFrame", std::move(frame));
        accessibility.setAttribute(item, "AXPosition", std::move(position));
        accessibility.setAttribute(item, "AXSize", std::move(size));
    };
    add(Point{1, 2}, Point{10, 0}, Size{20, 24});
    add(Point{1, 2}, Size{40, 0}, Size{20, 24});
    add(Point{1, 2}, Point{70, 0}, Point{20, 24});
    add(Rect{{100, 0}, {30, 24}}, Point{130, 0}, Size{20, 24});
    const auto owners = IconIdentity::resolveOwners(accessibility);
    ASSERT_EQ(owners.size(), 2U);
    EXPECT_EQ(owners[0].frame, (Rect{{10, 0}, {20, 24}}));
    EXPECT_EQ(owners[1].frame, (Rect{{100, 0}, {30, 24}}));
}

TEST_F(IconIdentityTest, namesFallBackToTheBundleIdentifierAndThenToApp) {
    for (const std::int32_t pid : {1, 2, 3}) {
        accessibility.addApplication(pid, "Name");
        accessibility.addStatusItem(pid, {{10.0 * pid, 0}, {9, 24}});
    }
    accessibility.running[1].localizedName.reset();
    accessibility.running[1].bundleIdentifier = "org.example.two";
    accessibility.running[2].localizedName.reset();
    accessibility.running[2].bundleIdentifier.reset();
    const auto owners = IconIdentity::resolveOwners(accessibility);
    ASSERT_EQ(owners.size(), 3U);
    EXPECT_EQ(owners[0].appName, "Name");
    EXPECT_EQ(owners[1].appName, "org.example.two");
    EXPECT_EQ(owners[2].appName, "App");
}

TEST_F(IconIdentityTest, membersThatAreNoElementsAreSkipped) {
    accessibility.addApplication(7, "Seven");
    const auto item = accessibility.addStatusItem(7, {{10, 0}, {20, 24}});
    const auto application = accessibility.applicationElement(7);
    const auto extras = std::get<AccessibilityElement>(
        *accessibility.copyAttributeValue(application, "AXExtrasMenuBar"));
    accessibility.setAttribute(extras, "AXChildren",
                               AccessibilityElementList{std::nullopt, item, std::nullopt});
    EXPECT_EQ(IconIdentity::resolveOwners(accessibility).size(), 1U);
    accessibility.setAttribute(extras, "AXChildren", std::string("no list"));
    EXPECT_TRUE(IconIdentity::resolveOwners(accessibility).empty());
    accessibility.setAttribute(application, "AXExtrasMenuBar", std::string("no element"));
    EXPECT_TRUE(IconIdentity::resolveOwners(accessibility).empty());
}

TEST_F(IconIdentityTest, aHungApplicationCostsItsTimeoutAndHasNoItems) {
    accessibility.addApplication(7, "Hung");
    accessibility.addStatusItem(7, {{10, 0}, {20, 24}});
    accessibility.addApplication(8, "Well");
    accessibility.addStatusItem(8, {{40, 0}, {20, 24}});
    accessibility.hung.insert(7);
    const auto owners = IconIdentity::resolveOwners(accessibility);
    ASSERT_EQ(owners.size(), 1U);
    EXPECT_EQ(owners[0].appName, "Well");
    EXPECT_FLOAT_EQ(static_cast<float>(accessibility.secondsLostToHungProcesses), 0.3F);
}

TEST_F(IconIdentityTest, anAcceptedPressIsTrueAndSilent) {
    const auto owner = ownerAt(10);
    accessibility.setAction(owner.element, "AXPress", 0);
    EXPECT_TRUE(IconIdentity::press(owner, accessibility, world.log));
    EXPECT_TRUE(world.log.lines.empty());
    ASSERT_EQ(accessibility.performed.size(), 1U);
    EXPECT_EQ(accessibility.performed[0].action, "AXPress");
}

TEST_F(IconIdentityTest, aRefusedPressIsFalseLoggedAndNotRetried) {
    auto owner = ownerAt(10, 20, 42);
    owner.appName = "100% %s App";
    accessibility.setAction(owner.element, "AXPress", -25204);
    EXPECT_FALSE(IconIdentity::press(owner, accessibility, world.log));
    EXPECT_EQ(world.log.lines,
              std::vector<std::string>{
                  "Orrivane: AXPress failed for 100% %s App (pid 42): AXError -25204"});
    EXPECT_EQ(accessibility.performed.size(), 1U);
    accessibility.setAction(owner.element, "AXPress", 1);
    EXPECT_FALSE(IconIdentity::press(owner, accessibility, world.log));
}

TEST_F(IconIdentityTest, aMenuIsOpenOnlyForADirectChildOfThatRole) {
    const auto owner = ownerAt(10);
    EXPECT_FALSE(IconIdentity::hasOpenMenu(owner, accessibility));
    const auto group = accessibility.makeElement(5);
    const auto menu = accessibility.makeElement(5);
    const auto roleless = accessibility.makeElement(5);
    accessibility.setAttribute(group, "AXRole", std::string("AXGroup"));
    accessibility.setAttribute(group, "AXChildren", AccessibilityElementList{menu});
    accessibility.setAttribute(menu, "AXRole", std::string("AXMenu"));
    accessibility.setAttribute(owner.element, "AXChildren",
                               AccessibilityElementList{std::nullopt, roleless, group});
    EXPECT_FALSE(IconIdentity::hasOpenMenu(owner, accessibility));
    accessibility.setAttribute(group, "AXRole", std::string("AXMenuBar"));
    EXPECT_FALSE(IconIdentity::hasOpenMenu(owner, accessibility));
    accessibility.setAttribute(owner.element, "AXChildren",
                               AccessibilityElementList{roleless, group, menu});
    EXPECT_TRUE(IconIdentity::hasOpenMenu(owner, accessibility));
    accessibility.setAttribute(owner.element, "AXChildren", std::string("no list"));
    EXPECT_FALSE(IconIdentity::hasOpenMenu(owner, accessibility));
}

TEST_F(IconIdentityTest, withoutABarFrameTheWidthSpansTheChildren) {
    const Frames children{Rect{{0, 0}, {300, 24}}, std::nullopt, Rect{{320, 0}, {180, 24}}};
    EXPECT_EQ(IconIdentity::menuWidth(std::nullopt, children), 500);
    EXPECT_EQ(IconIdentity::menuWidth(Rect{{-100, 0}, {1512, 24}}, children), 600);
}

TEST_F(IconIdentityTest, theWidthReachesFromTheBarsLeftEndToTheLastRightOneInWhateverOrder) {
    const Frames children{Rect{{320, 0}, {180, 24}}, Rect{{50, 0}, {250, 24}}};
    EXPECT_EQ(IconIdentity::menuWidth(std::nullopt, children), 450);
    EXPECT_EQ(IconIdentity::menuWidth(Rect{{10, 0}, {1512, 24}}, children), 490);
    EXPECT_EQ(IconIdentity::menuWidth(Rect{{1512, 0}, {-1512, 24}}, children), 500);
}

TEST_F(IconIdentityTest, aMenuBarsOwnFrameIsUsedWhereItHasOne) {
    accessibility.addApplication(1, "Owner");
    accessibility.menuBarOwner = accessibility.running[0];
    const Frames menus{Rect{{40, 0}, {260, 24}}, Rect{{320, 0}, {180, 24}}};
    accessibility.setMenuBar(1, std::nullopt, menus);
    EXPECT_EQ(IconIdentity::frontmostMenuWidth(accessibility), 460);
    accessibility.setMenuBar(1, Rect{{0, 0}, {1512, 24}}, menus);
    EXPECT_EQ(IconIdentity::frontmostMenuWidth(accessibility), 500);
}

TEST_F(IconIdentityTest, withoutChildrenThatHaveFramesTheWidthIsUnknown) {
    EXPECT_FALSE(IconIdentity::menuWidth(Rect{{0, 0}, {1512, 24}}, Frames{}));
    EXPECT_FALSE(IconIdentity::menuWidth(Rect{{0, 0}, {1512, 24}}, Frames{std::nullopt}));
}

TEST_F(IconIdentityTest, theMenuBarsOwnerIsAskedBeforeTheFrontmostApplication) {
    accessibility.addApplication(1, "Owner");
    accessibility.addApplication(2, "Frontmost");
    accessibility.setMenuBar(1, Rect{{0, 0}, {1512, 24}}, {Rect{{0, 0}, {200, 24}}});
    accessibility.setMenuBar(2, Rect{{0, 0}, {1512, 24}}, {Rect{{0, 0}, {300, 24}}});
    EXPECT_FALSE(IconIdentity::frontmostMenuWidth(accessibility));
    accessibility.frontmost = accessibility.running[1];
    EXPECT_EQ(IconIdentity::frontmostMenuWidth(accessibility), 300);
    accessibility.menuBarOwner = accessibility.running[0];
    EXPECT_EQ(IconIdentity::frontmostMenuWidth(accessibility), 200);
    EXPECT_EQ(accessibility.timeouts.back().seconds, 0.3F);
    accessibility.hung.insert(1);
    EXPECT_FALSE(IconIdentity::frontmostMenuWidth(accessibility));
    accessibility.menuBarOwner->processIdentifier = -1;
    EXPECT_FALSE(IconIdentity::frontmostMenuWidth(accessibility));
}

TEST_F(IconIdentityTest, aMenuBarWithoutChildrenOrOfAnotherTypeGivesNoWidth) {
    accessibility.addApplication(1, "Owner");
    accessibility.menuBarOwner = accessibility.running[0];
    EXPECT_FALSE(IconIdentity::frontmostMenuWidth(accessibility));
    accessibility.setMenuBar(1, Rect{{0, 0}, {1512, 24}}, {});
    EXPECT_FALSE(IconIdentity::frontmostMenuWidth(accessibility));
    accessibility.setAttribute(accessibility.applicationElement(1), "AXMenuBar",
                               std::string("no element"));
    EXPECT_FALSE(IconIdentity::frontmostMenuWidth(accessibility));
}

TEST_F(IconIdentityTest, ownersAreEqualWhenAllTheirFieldsAre) {
    const auto owner = ownerAt(10);
    auto same = owner;
    same.frame = {{30, 24}, {-20, -24}}; // the same rectangle
    EXPECT_EQ(owner, same);
    same.pid = 6;
    EXPECT_NE(owner, same);
    EXPECT_NE(owner, ownerAt(10)) << "another element";
}

} // namespace
} // namespace orrivane
