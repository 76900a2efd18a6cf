#include "DiagnosisFixture.h"

#include <limits>

namespace orrivane {
namespace {

ScreenDescription plainScreen(const Rect& frame) {
    ScreenDescription screen;
    screen.frame = frame;
    return screen;
}

struct DiagnosisTest : DiagnosisFixture {
    std::string reason(std::uint32_t id) {
        for (const auto& item : take().items)
            if (item.window.id == id)
                return item.reason;
        return "no such item";
    }
};

TEST_F(DiagnosisTest, mirroredItemsHaveNoReason) {
    EXPECT_EQ(reason(11), "");
    EXPECT_EQ(reason(12), "");
    EXPECT_EQ(reason(13), "it is visible");
    EXPECT_EQ(take().obstacle(), "");
}

TEST_F(DiagnosisTest, whatFindsNoRoomSaysSo) {
    setMenuWidth(600);
    EXPECT_EQ(reason(11), "there is no room left of the notch");
    EXPECT_EQ(reason(12), "");
}

TEST_F(DiagnosisTest, ownItemsSaySo) {
    world.ownWindows.numbers = {12};
    EXPECT_EQ(reason(12), "it is Orrivane's own");
    EXPECT_EQ(reason(11), "");
}

TEST_F(DiagnosisTest, theIconOfTheRunningProgramIsItsOwnToo) {
    world.accessibility.addApplication(77, "orrivane");
    world.accessibility.addStatusItem(77, {{740, 0}, {30, 37}});
    const auto diagnosis = Diagnosis::take(world.platform(), shell.globalPreferences, 77);
    ASSERT_EQ(diagnosis.items.size(), 3U);
    EXPECT_EQ(diagnosis.items[1].process, 77);
    EXPECT_EQ(diagnosis.items[1].reason, "it is Orrivane's own");
    EXPECT_EQ(diagnosis.items[0].reason, "");
    EXPECT_NE(diagnosis.text().find("Running: yes, process 77\n"), std::string::npos);
}

TEST_F(DiagnosisTest, theFirstObstacleIsTheOneThatIsNamed) {
    world.accessibility.trusted = false;
    EXPECT_EQ(reason(11), "other programs' items may not be pressed");
    world.screenCapture.accessGranted = false;
    EXPECT_EQ(reason(11), "the screen may not be captured");
    world.screens.displayIsAsleep = true;
    EXPECT_EQ(reason(11), "the screen is asleep");
    world.userDefaults.setBool(StripController::enabledKey, false);
    EXPECT_EQ(reason(11), "the tray is switched off");
    EXPECT_EQ(reason(13), "it is visible");
}

TEST_F(DiagnosisTest, aSecondScreenIsAnObstacleOnlyIfTheUserSaysSo) {
    world.screens.list.push_back(plainScreen({{1512, 0}, {1000, 800}}));
    EXPECT_EQ(reason(11), "");
    world.userDefaults.setBool(StripController::externalKey, false);
    EXPECT_EQ(reason(11), "another screen is connected and mirroring is switched off meanwhile");
}

TEST_F(DiagnosisTest, withoutANotchNothingIsHidden) {
    world.screens.list = {plainScreen({{0, 0}, {1512, 982}})};
    const auto diagnosis = take();
    EXPECT_FALSE(diagnosis.notch);
    EXPECT_EQ(diagnosis.obstacle(), "no notch is known");
    EXPECT_NE(diagnosis.text().find("Notch: none known"), std::string::npos);
    EXPECT_NE(diagnosis.json().find("\"notch\":null"), std::string::npos);
}

TEST_F(DiagnosisTest, itAsksButChangesNothing) {
    take();
    EXPECT_TRUE(world.screenCapture.captures.empty());
    EXPECT_EQ(world.journal.count("performAction"), 0U);
}

TEST_F(DiagnosisTest, theStoredSpacingIsReportedAsStored) {
    shell.globalPreferences.setValue("NSStatusItemSpacing", 6);
    const auto diagnosis = take();
    EXPECT_EQ(diagnosis.spacing, 6);
    EXPECT_EQ(diagnosis.padding, std::nullopt);
    EXPECT_NE(diagnosis.text().find("Spacing stored: 6\nPadding stored: none\n"),
              std::string::npos);
}

TEST(DiagnosisText, jsonKeepsEveryNameReadable) {
    Diagnosis diagnosis;
    diagnosis.version = "1.0";
    Diagnosis::Item item;
    item.window = {.id = 7, .frame = {{1.25, 0}, {30, 37}}, .isOnscreen = true, .isEaten = true};
    item.application = "Say \"hi\"\\\n\x01 Ünïcode";
    item.process = 42;
    diagnosis.items = {item};
    EXPECT_NE(diagnosis.json().find(
                  "{\"id\":7,\"frame\":[1.25,0,30,37],\"application\":\"Say "
                  "\\\"hi\\\"\\\\\\u000a\\u0001 Ünïcode\",\"process\":42,\"isOnscreen\":true,"
                  "\"isEaten\":true,\"isMirrored\":true,\"reason\":\"\"}"),
              std::string::npos)
        << diagnosis.json();
}

TEST(DiagnosisText, jsonHasNoNumberThatJsonDoesNotKnow) {
    Diagnosis diagnosis;
    diagnosis.menuWidth = std::numeric_limits<double>::quiet_NaN();
    diagnosis.screens = {
        plainScreen({{-0.05, 1e300}, {std::numeric_limits<double>::infinity(), 2}})};
    const auto json = diagnosis.json();
    EXPECT_NE(json.find("\"menuWidth\":null"), std::string::npos);
    EXPECT_NE(json.find("[-0.05,null,null,2]"), std::string::npos) << json;
}

} // namespace
} // namespace orrivane
