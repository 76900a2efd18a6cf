#include "DiagnosisFixture.h"

#include <tests/support/Json.h>

#include <array>
#include <stdexcept>

namespace orrivane {
namespace {

using DiagnosisJsonTest = DiagnosisFixture;

TEST_F(DiagnosisJsonTest, aMachineCanReadEverythingThatWasSeen) {
    world.screens.list.push_back(ScriptedScreens::plain({{1512, 0}, {1000, 800}}));
    world.windowList.owners[11] = {50, "Editor"};
    world.ownWindows.numbers = {12, -1};
    world.accessibility.addStatusItem(50, {{700, 0}, {30, 37}});
    const auto json = Json::parse(take().json());
    EXPECT_EQ(json["bundle"]["version"].text(), "1.2.0");
    EXPECT_EQ(json["bundle"]["build"].text(), "12");
    EXPECT_EQ(json["screens"][0]["visibleFrame"].numbers(), (std::vector<double>{0, 0, 1512, 945}));
    EXPECT_TRUE(json["screens"][0]["isMain"].truth());
    EXPECT_FALSE(json["screens"][1]["isMain"].truth());
    EXPECT_TRUE(json["screens"][1]["auxiliaryTopLeftArea"].isNull());
    EXPECT_EQ(json["menuBarOwner"]["name"].text(), "Editor");
    EXPECT_EQ(json["menuBarOwner"]["bundleIdentifier"].text(), "test.Editor");
    EXPECT_EQ(json["menuBarOwner"]["process"].number(), 50);
    EXPECT_TRUE(json["frontmost"].isNull());
    EXPECT_EQ(json["ownWindows"]["numbers"].numbers(), (std::vector<double>{12, -1}));
    EXPECT_FALSE(json["ownWindows"]["isRunningElsewhere"].truth());
    EXPECT_TRUE(json["captures"].isNull());
}

TEST_F(DiagnosisJsonTest, windowsAreListedAsTheServerListsThem) {
    world.windowList.owners[11] = {50, "Editor"};
    world.windowList.all.push_back({std::nullopt, std::nullopt, Rect{}, std::nullopt});
    const auto windows = Json::parse(take().json())["windows"];
    ASSERT_EQ(windows.list().size(), 4U);
    EXPECT_EQ(windows[0]["number"].number(), 11);
    EXPECT_EQ(windows[0]["layer"].number(), 25);
    EXPECT_EQ(windows[0]["bounds"].numbers(), (std::vector<double>{700, 0, 30, 37}));
    EXPECT_TRUE(windows[0]["onscreen"].truth());
    EXPECT_EQ(windows[0]["process"].number(), 50);
    EXPECT_EQ(windows[0]["owner"].text(), "Editor");
    for (const auto* key : {"number", "layer", "onscreen", "process", "owner"})
        EXPECT_TRUE(windows[3][key].isNull()) << key;
}

TEST_F(DiagnosisJsonTest, extrasBarsAreListedWithTheirChildren) {
    world.accessibility.addStatusItem(50, {{700, 0}, {30, 37}});
    const auto item = world.accessibility.addStatusItem(50, {});
    world.accessibility.removeAttribute(item, "AXFrame");
    world.accessibility.setAttribute(item, "AXRole", std::string("AXMenuBarItem"));
    const auto bar = Json::parse(take().json())["extrasBars"][0];
    EXPECT_EQ(bar["application"].text(), "Editor");
    EXPECT_EQ(bar["process"].number(), 50);
    EXPECT_TRUE(bar["answered"].truth());
    EXPECT_TRUE(bar["isThere"].truth());
    EXPECT_EQ(bar["milliseconds"].number(), 0);
    EXPECT_EQ(bar["childCount"].number(), 2);
    EXPECT_EQ(bar["children"][0]["frame"].numbers(), (std::vector<double>{700, 0, 30, 37}));
    EXPECT_EQ(bar["children"][0]["role"].text(), "");
    EXPECT_TRUE(bar["children"][1]["frame"].isNull());
    EXPECT_EQ(bar["children"][1]["role"].text(), "AXMenuBarItem");
}

TEST_F(DiagnosisJsonTest, capturesAreListedWithWhatBecameOfThem) {
    auto diagnosis = take();
    diagnosis.captures = CaptureProbes{9,
                                       {{11, true, CaptureProbe::Picture{60, 74, true}},
                                        {12, true, CaptureProbe::Picture{60, 74, std::nullopt}},
                                        {13, false, std::nullopt}}};
    const auto captures = Json::parse(diagnosis.json())["captures"];
    EXPECT_EQ(captures["snapshotSize"].number(), 9);
    EXPECT_EQ(captures["windows"][0]["id"].number(), 11);
    EXPECT_TRUE(captures["windows"][0]["isInSnapshot"].truth());
    EXPECT_EQ(captures["windows"][0]["picture"]["width"].number(), 60);
    EXPECT_EQ(captures["windows"][0]["picture"]["height"].number(), 74);
    EXPECT_TRUE(captures["windows"][0]["picture"]["isClear"].truth());
    EXPECT_TRUE(captures["windows"][1]["picture"]["isClear"].isNull());
    EXPECT_FALSE(captures["windows"][2]["isInSnapshot"].truth());
    EXPECT_TRUE(captures["windows"][2]["picture"].isNull());
    diagnosis.captures = CaptureProbes{};
    EXPECT_TRUE(Json::parse(diagnosis.json())["captures"]["snapshotSize"].isNull());
}

TEST_F(DiagnosisJsonTest, noNameBreaksTheObject) {
    const std::array<std::pair<std::string, std::string>, 5> names{{
        {"Say \"hi\" \\", "Say \"hi\" \\"},
        {"two\nlines\tand\x01 more", "two\nlines\tand\x01 more"},
        {"\xc3\x9cn\xc3\xaf\xf0\x9f\x98\x80", "\xc3\x9cn\xc3\xaf\xf0\x9f\x98\x80"},
        {"cut \xe2\x82", "cut \xef\xbf\xbd\xef\xbf\xbd"},
        {"\xff\"", "\xef\xbf\xbd\""},
    }};
    for (const auto& [name, expected] : names) {
        world.windowList.owners[11] = {50, name};
        world.accessibility.running.back().localizedName = name;
        world.accessibility.running.back().bundleIdentifier = name;
        world.accessibility.frontmost = world.accessibility.running.back();
        world.workspace.versions = {name, name};
        const auto json = Json::parse(take().json());
        EXPECT_EQ(json["windows"][0]["owner"].text(), expected);
        EXPECT_EQ(json["extrasBars"][0]["application"].text(), expected);
        EXPECT_EQ(json["frontmost"]["name"].text(), expected);
        EXPECT_EQ(json["frontmost"]["bundleIdentifier"].text(), expected);
        EXPECT_EQ(json["bundle"]["version"].text(), expected);
    }
}

TEST(JsonText, whatIsNoJsonIsRefused) {
    for (const auto* text : {"", "{", "[1,]", "{\"a\":1,\"a\":2}", "nan", "\"\n\"", "\"\xff\"",
                             "\"\\x\"", "01", "1.", "{} x", "{\"a\"}", "\"\xed\xa0\x80\""})
        EXPECT_THROW((void)Json::parse(text), std::runtime_error) << text;
}

} // namespace
} // namespace orrivane
