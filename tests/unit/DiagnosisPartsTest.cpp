#include "DiagnosisFixture.h"

#include <algorithm>

namespace orrivane {
namespace {

/// What a diagnosis lists beside the items.
struct DiagnosisPartsTest : DiagnosisFixture {
    std::vector<std::uint32_t> windowNumbers() {
        std::vector<std::uint32_t> result;
        for (const auto& entry : take().windows)
            result.push_back(entry.window.number.value_or(0));
        return result;
    }
    void addWindow(std::uint32_t number, double y) {
        world.windowList.add(number, {{100, y}, {30, 24}}, true, 0);
    }
};

TEST_F(DiagnosisPartsTest, windowsNearTheTopAreListedWithTheirOwners) {
    world.windowList.owners[11] = {50, "Editor"};
    const auto diagnosis = take();
    ASSERT_EQ(diagnosis.windows.size(), 3U);
    const WindowListEntry entry{25, 11, Rect{{700, 0}, {30, 37}}, true};
    EXPECT_EQ(diagnosis.windows[0], (OwnedWindow{entry, 50, "Editor"}));
    EXPECT_EQ(diagnosis.windows[1].process, std::nullopt);
    const auto text = diagnosis.text();
    EXPECT_NE(text.find("Windows near the top: 3\n"
                        "  11  layer 25  30 x 37 at 700,0  Editor (50)\n"
                        "  12  layer 25  30 x 37 at 740,0  unknown (unknown)\n"),
              std::string::npos)
        << text;
}

TEST_F(DiagnosisPartsTest, nearTheTopIsLessThanSixtyPointsFromTheTopOfAnyScreen) {
    world.windowList.clear();
    addWindow(1, 59.5);
    addWindow(2, 60);
    addWindow(3, -24);
    addWindow(4, 982);
    world.windowList.all.push_back({25, 5, std::nullopt, true});
    EXPECT_EQ(windowNumbers(), (std::vector<std::uint32_t>{1, 3}));
    // Below the first one: its top line lies at 982.
    world.screens.list.push_back(ScriptedScreens::plain({{0, -1080}, {1920, 1080}}));
    EXPECT_EQ(windowNumbers(), (std::vector<std::uint32_t>{1, 3, 4}));
}

TEST_F(DiagnosisPartsTest, ownWindowsAreThoseOfThisProcess) {
    world.ownWindows.numbers = {12, -1};
    const auto diagnosis = take();
    EXPECT_EQ(diagnosis.ownWindows, (std::vector<std::int64_t>{12, -1}));
    EXPECT_NE(diagnosis.text().find("Own windows of this process: 12 -1\n"), std::string::npos);
    world.ownWindows.numbers.clear();
    EXPECT_NE(take().text().find("Own windows of this process: none\n"), std::string::npos);
}

TEST_F(DiagnosisPartsTest, screensSayWhatTheyLeaveFreeAndWhichIsMain) {
    world.screens.list.push_back(ScriptedScreens::plain({{1512, 0}, {1000, 800}}));
    world.screens.mainIndex = 1;
    const auto diagnosis = take();
    ASSERT_EQ(diagnosis.screenPlaces.size(), 2U);
    EXPECT_EQ(diagnosis.screenPlaces[0], (Diagnosis::ScreenPlace{{{0, 0}, {1512, 945}}, false}));
    EXPECT_EQ(diagnosis.screenPlaces[1], (Diagnosis::ScreenPlace{{{1512, 0}, {1000, 776}}, true}));
    EXPECT_NE(diagnosis.text().find("Screen: 1000 x 800 at 1512,0, top inset 0, free 1000 x 776 at "
                                    "1512,0, main\n"),
              std::string::npos)
        << diagnosis.text();
}

TEST_F(DiagnosisPartsTest, itNamesWhoOwnsTheMenuBarAndWhoIsInFront) {
    world.accessibility.frontmost = RunningApplication{51, std::nullopt, "test.Browser"};
    auto diagnosis = take();
    EXPECT_EQ(diagnosis.menuBarOwner, world.accessibility.running.back());
    EXPECT_NE(diagnosis.text().find("Menu bar belongs to: Editor (50)\n"
                                    "In front: test.Browser (51)\n"),
              std::string::npos);
    world.accessibility.frontmost.reset();
    EXPECT_NE(take().text().find("In front: unknown\n"), std::string::npos);
}

TEST_F(DiagnosisPartsTest, itNamesTheVersionThatTheSystemKnows) {
    world.workspace.versions = {"1.3.0", "17"};
    EXPECT_NE(take().text().find("Version in the bundle: 1.3.0, build 17\n"), std::string::npos);
}

TEST_F(DiagnosisPartsTest, everyProgramIsListedWithWhatItAnswers) {
    world.accessibility.addApplication(60, "Stuck");
    world.accessibility.hung = {60};
    world.accessibility.addApplication(61, "Mixer");
    world.accessibility.addStatusItem(61, {{700, 0}, {30, 37}});
    const auto text = take().text();
    EXPECT_NE(text.find("Programs asked for their items: 3\n"), std::string::npos) << text;
    EXPECT_NE(text.find("  Stuck (60)  no answer in 600 ms\n"
                        "  Mixer (61)  1 items in 0 ms\n"
                        "    no role  30 x 37 at 700,0\n"),
              std::string::npos)
        << text;
}

TEST_F(DiagnosisPartsTest, picturesAreTakenByNobodyWhoDoesNotAskForThem) {
    const auto diagnosis = take();
    EXPECT_FALSE(diagnosis.captures);
    EXPECT_EQ(world.screenCapture.contentCalls, 0);
    EXPECT_NE(diagnosis.text().find("Captures: none asked for\n"), std::string::npos);
}

TEST_F(DiagnosisPartsTest, theTextSaysWhatBecameOfPictures) {
    auto diagnosis = take();
    diagnosis.captures = CaptureProbes{};
    EXPECT_NE(diagnosis.text().find("Captures: there is no snapshot\n"), std::string::npos);
    diagnosis.captures = CaptureProbes{9,
                                       {{11, true, CaptureProbe::Picture{60, 74, false}},
                                        {12, true, CaptureProbe::Picture{60, 74, true}},
                                        {13, true, CaptureProbe::Picture{60, 74, std::nullopt}},
                                        {14, true, std::nullopt},
                                        {15, false, std::nullopt}}};
    EXPECT_NE(diagnosis.text().find("Captures: the snapshot has 9 windows\n"
                                    "  11  60 x 74 pixels\n"
                                    "  12  60 x 74 pixels, all clear\n"
                                    "  13  60 x 74 pixels, unread\n"
                                    "  14  no picture\n"
                                    "  15  not in the snapshot\n"),
              std::string::npos)
        << diagnosis.text();
}

TEST_F(DiagnosisPartsTest, aNameWithALineBreakDoesNotBreakTheLines) {
    const auto lines = [](const std::string& text) { return std::ranges::count(text, '\n'); };
    world.windowList.owners[11] = {50, "Editor"};
    const auto before = lines(take().text());
    world.windowList.owners[11].second = "Ed\nitor\r";
    world.accessibility.running.back().localizedName = "Ed\nitor";
    world.accessibility.menuBarOwner = world.accessibility.running.back();
    EXPECT_EQ(lines(take().text()), before);
}

} // namespace
} // namespace orrivane
