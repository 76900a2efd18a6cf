#include "AppStateFixture.h"

namespace orrivane {
namespace {

using AppStateRefreshTest = AppStateFixture;

TEST_F(AppStateRefreshTest, aRefreshAsksInItsOrder) {
    desktop.journal.clear();
    refresh();
    EXPECT_EQ(calls({"preflightAccess", "allWindows", "captureImage", "copyValue"}),
              (Calls{"preflightAccess", "allWindows", "captureImage 11", "captureImage 12",
                     "copyValue NSStatusItemSpacing", "copyValue NSStatusItemSelectionPadding"}));
    ASSERT_TRUE(state->census());
    EXPECT_EQ(state->census()->items.size(), 2U);
    EXPECT_EQ(state->images().size(), 2U);
    EXPECT_FALSE(state->isRefreshing());
}

TEST_F(AppStateRefreshTest, itShowsThatItRunsUntilItsEndTheCaptureIncluded) {
    desktop.screenCapture.captureReply = CaptureReply::later(0.5);
    std::vector<bool> announced;
    const auto observer = state->observe([&] { announced.push_back(state->isRefreshing()); });
    const auto handle = begin(state->refresh());
    desktop.loop.advance(0.4);
    EXPECT_TRUE(state->isRefreshing());
    EXPECT_TRUE(state->census()) << "new already";
    EXPECT_TRUE(state->images().empty()) << "still the old ones";
    desktop.loop.advance(0.1);
    EXPECT_FALSE(state->isRefreshing());
    EXPECT_EQ(state->images().size(), 2U);
    EXPECT_FALSE(handle.isRunning());
    // isRefreshing, screenGranted, census; images, squeeze, isRefreshing.
    EXPECT_EQ(announced, (std::vector<bool>{false, true, true, true, true, true}));
}

TEST_F(AppStateRefreshTest, withoutPermissionNothingIsCapturedAndTheRestIsRefreshed) {
    desktop.screenCapture.accessGranted = false;
    shell.globalPreferences.values = {{spacingKey, 6}};
    refresh();
    EXPECT_FALSE(state->screenGranted());
    EXPECT_EQ(captureCount(), 0U);
    EXPECT_EQ(desktop.screenCapture.contentCalls, 0);
    EXPECT_TRUE(state->images().empty());
    EXPECT_TRUE(state->census());
    EXPECT_EQ(state->squeeze(), (SqueezeState{6, std::nullopt}));
    EXPECT_FALSE(state->isRefreshing());
}

TEST_F(AppStateRefreshTest, aPermissionTakenAwayLeavesTheImagesAsTheyWere) {
    refresh();
    const auto images = state->images();
    desktop.screenCapture.accessGranted = false;
    moveItem(visible, 950, 40);
    refresh();
    EXPECT_EQ(state->images(), images);
    desktop.screenCapture.accessGranted = true;
    refresh();
    EXPECT_EQ(captureCount(), 4U) << "the frames of the last capture are the old ones";
}

TEST_F(AppStateRefreshTest, aPermissionGivenLaterIsSeenByTheNextRefresh) {
    desktop.screenCapture.accessGranted = false;
    refresh();
    desktop.screenCapture.accessGranted = true;
    refresh();
    EXPECT_TRUE(state->screenGranted());
    EXPECT_EQ(state->images().size(), 2U);
}

TEST_F(AppStateRefreshTest, twoRefreshesWithNothingChangedCaptureOnce) {
    refresh();
    refresh();
    EXPECT_EQ(capturedIDs(), (IDs{hidden, visible}));
}

TEST_F(AppStateRefreshTest, oneItemMovedByOnePointForcesASecondCapture) {
    refresh();
    moveItem(visible, 901, 40);
    refresh();
    EXPECT_EQ(captureCount(), 4U);
}

TEST_F(AppStateRefreshTest, oneItemWidenedForcesASecondCapture) {
    refresh();
    moveItem(visible, 900, 41);
    refresh();
    EXPECT_EQ(captureCount(), 4U);
}

TEST_F(AppStateRefreshTest, anItemThatOnlyChangedSidesOfTheNotchIsNotCapturedAgain) {
    refresh();
    desktop.screens.list = {ScriptedScreens::plain({{0, 0}, {1512, 982}})};
    refresh();
    EXPECT_EQ(captureCount(), 2U) << "only numbers and frames count";
    EXPECT_EQ(state->census()->notch, std::nullopt);
}

TEST_F(AppStateRefreshTest, aNewItemAndAVanishedOneForceACaptureOfThoseThereNow) {
    refresh();
    addItem(13, 960, 20);
    refresh();
    EXPECT_EQ(capturedIDs(), (IDs{hidden, visible, hidden, visible, 13}));
    desktop.windowList.remove(hidden);
    refresh();
    EXPECT_EQ(captureCount(), 7U);
    EXPECT_FALSE(state->images().contains(hidden)) << "the map is replaced whole";
    EXPECT_EQ(state->images().size(), 2U);
}

TEST_F(AppStateRefreshTest, itemsThatAreOffScreenAreCapturedToo) {
    desktop.windowList.add(14, {{1000, 0}, {20, 37}}, false);
    refresh();
    EXPECT_EQ(capturedIDs(), (IDs{hidden, visible}));
    EXPECT_EQ(state->census()->items.size(), 3U);
    desktop.screenCapture.addWindow(14, {20, 37});
    captures.invalidateWindowCache();
    moveItem(visible, 901, 40);
    refresh();
    EXPECT_EQ(capturedIDs(), (IDs{hidden, visible, hidden, visible, 14}));
}

TEST_F(AppStateRefreshTest, imagesAreAskedForInTheOrderOfTheCensus) {
    desktop.windowList.clear();
    addItem(20, 900, 40);
    addItem(10, 1000, 40);
    addItem(30, 700, 30);
    refresh();
    EXPECT_EQ(capturedIDs(), (IDs{30, 20, 10}))
        << "neither by number nor as the windows are listed";
}

TEST_F(AppStateRefreshTest, anEmptyCaptureIsTriedAgainThoughNothingChanged) {
    desktop.screenCapture.captureReply = CaptureReply::failure();
    refresh();
    EXPECT_TRUE(state->images().empty());
    refresh();
    EXPECT_EQ(captureCount(), 4U);
    desktop.screenCapture.captureReply = CaptureReply::now();
    refresh();
    refresh();
    EXPECT_EQ(captureCount(), 6U);
}

TEST_F(AppStateRefreshTest, aCaptureThatMissedOneItemIsNotRepeated) {
    desktop.screenCapture.captureReplies[hidden] = CaptureReply::failure();
    refresh();
    refresh();
    EXPECT_EQ(captureCount(), 2U);
    EXPECT_EQ(state->images().size(), 1U);
}

TEST_F(AppStateRefreshTest, anEmptyMenuBarIsRefreshedWithoutAnImage) {
    desktop.windowList.clear();
    refresh();
    EXPECT_EQ(captureCount(), 0U);
    ASSERT_TRUE(state->census());
    EXPECT_TRUE(state->census()->items.empty());
    EXPECT_TRUE(state->previewIcons().empty());
    EXPECT_FALSE(state->isRefreshing());
}

TEST_F(AppStateRefreshTest, theSliderIsNotMovedByARefresh) {
    state->setSliderValue(9);
    shell.globalPreferences.values = {{spacingKey, 6}, {paddingKey, 4}};
    refresh();
    EXPECT_EQ(state->squeeze(), (SqueezeState{6, 4}));
    EXPECT_EQ(state->sliderValue(), 9.0);
}

TEST_F(AppStateRefreshTest, theCensusIsAssignedAlsoWhenItIsTheSame) {
    refresh();
    int announcements = 0;
    const auto observer = state->observe([&] { ++announcements; });
    refresh();
    EXPECT_EQ(announcements, 5) << "isRefreshing, screenGranted, census, squeeze, isRefreshing";
}

TEST_F(AppStateRefreshTest, aCaptureThatNeverAnswersEndsTheRefreshAllTheSame) {
    desktop.screenCapture.captureReply = CaptureReply::never();
    const auto handle = begin(state->refresh());
    desktop.loop.advance(CaptureService::answerLimit);
    EXPECT_FALSE(state->isRefreshing());
    EXPECT_FALSE(handle.isRunning());
    EXPECT_TRUE(state->images().empty());
}

TEST_F(AppStateRefreshTest, theSignatureOfACensusHasTheFrameOfEveryItem) {
    const CensusResult census{std::nullopt,
                              {{4, {{10, 0}, {20, 24}}, true, true}, {9, {}, false, false}}};
    EXPECT_EQ(AppState::captureSignature(census),
              (AppState::Signature{{4, {{10, 0}, {20, 24}}}, {9, {}}}));
    EXPECT_TRUE(AppState::captureSignature({}).empty());
}

using AppStateRefreshDeathTest = AppStateFixture;

TEST_F(AppStateRefreshDeathTest, aRepeatedNumberInACensusEndsTheProgram) {
    const CensusResult census{std::nullopt,
                              {{4, {{10, 0}, {20, 24}}, true, true}, {4, {}, false, false}}};
    EXPECT_DEATH(AppState::captureSignature(census), "");
}

// Overlap.

TEST_F(AppStateRefreshTest, twoRefreshesMayOverlapAndBothRunInFull) {
    desktop.screenCapture.captureReply = CaptureReply::later(0.5);
    begin(state->refresh());
    desktop.loop.advance(0.2);
    moveItem(visible, 950, 40);
    begin(state->refresh());
    desktop.loop.advance(0.2);
    EXPECT_EQ(captureCount(), 4U);
    desktop.loop.advance(0.1);
    EXPECT_FALSE(state->isRefreshing()) << "false from the end of the first";
    desktop.loop.advance(0.2);
    EXPECT_FALSE(state->isRefreshing());
    refresh();
    EXPECT_EQ(captureCount(), 4U) << "the second one's frames are the ones that count";
}

TEST_F(AppStateRefreshTest, framesCountAsCapturedOnlyOnceTheirImagesAreThere) {
    refresh();
    moveItem(visible, 950, 40);
    desktop.screenCapture.captureReply = CaptureReply::later(0.5);
    begin(state->refresh());
    desktop.loop.advance(0.2);
    EXPECT_EQ(captureCount(), 4U);
    refresh();
    EXPECT_EQ(captureCount(), 6U) << "the images still show the old frames";
    desktop.loop.advance(0.5);
    refresh();
    EXPECT_EQ(captureCount(), 6U);
}

TEST_F(AppStateRefreshTest, theRefreshThatEndsLaterLeavesItsValues) {
    desktop.screenCapture.captureReply = CaptureReply::later(0.5);
    begin(state->refresh());
    desktop.loop.advance(0.1);
    moveItem(visible, 950, 40);
    desktop.screenCapture.captureReply = CaptureReply::now();
    refresh();
    EXPECT_FALSE(state->isRefreshing()) << "the second has ended, the first has not";
    const auto images = state->images();
    desktop.loop.advance(0.4);
    EXPECT_NE(state->images(), images) << "the first came last";
    EXPECT_EQ(state->census()->items.back().frame.minX(), 950);
    refresh();
    EXPECT_EQ(captureCount(), 6U) << "its frames are those of before the move";
}

TEST_F(AppStateRefreshTest, aRefreshKeepsItsStateWhileItCaptures) {
    desktop.screenCapture.captureReply = CaptureReply::later(0.5);
    const std::weak_ptr<AppState> alive = state;
    begin(state->refresh());
    state.reset();
    desktop.loop.advance(0.4);
    EXPECT_FALSE(alive.expired());
    desktop.loop.advance(0.1);
    EXPECT_TRUE(alive.expired());
}

} // namespace
} // namespace orrivane
