#include <Orrivane/CaptureService.h>

#include <tests/support/ScriptedImage.h>
#include <tests/support/ScriptedPlatform.h>

#include <gtest/gtest.h>

#include <cmath>

namespace orrivane {
namespace {

using Ids = std::vector<std::uint32_t>;

struct CaptureServiceTest : testing::Test {
    ScriptedPlatform world;
    ScriptedScreenCapture& port = world.screenCapture;
    CaptureService service{world.screenCapture, world.accessibility, world.workspace};
    std::optional<CaptureService::Images> result;

    static Task<> keep(CaptureService& from, Ids ids,
                       std::optional<CaptureService::Images>& result) {
        result = co_await from.captureIcons(std::move(ids));
    }
    void begin(const Ids& ids) {
        result.reset();
        start(world.loop, keep(service, ids, result));
        world.loop.runUntilIdle();
    }
    Ids capture(const Ids& ids) {
        begin(ids);
        EXPECT_TRUE(result) << "the capture has not ended";
        return captured();
    }
    [[nodiscard]] Ids captured() const {
        Ids keys;
        if (result)
            for (const auto& [id, image] : *result)
                keys.push_back(id);
        return keys;
    }
};

// Of two captures the first takes longer.
struct SlowFirst : ScreenCapture {
    SlowFirst(MainLoop& mainLoop, ScreenCapture& contents)
        : loop(mainLoop)
        , snapshots(contents) {}

    void
    shareableContent(std::function<void(std::optional<ShareableContent>)> completion) override {
        snapshots.shareableContent(std::move(completion));
    }
    void captureImage(const ShareableWindow&, const CaptureConfiguration& configuration,
                      std::function<void(std::optional<Image>)> completion) override {
        const double seconds = timers.empty() ? 0.5 : 0.1;
        timers.push_back(loop.wakeUp(seconds, [this, configuration, completion] {
            given.push_back(ScriptedImage::make(configuration.width, configuration.height));
            completion(given.back());
        }));
    }
    bool preflightAccess() override { return true; }
    bool requestAccess() override { return true; }

    MainLoop& loop;
    ScreenCapture& snapshots;
    std::vector<Subscription> timers;
    std::vector<Image> given; ///< in the order in which they were handed over
};

TEST_F(CaptureServiceTest, anEmptyListFillsAColdCacheAndAsksNothingOfAWarmOne) {
    EXPECT_EQ(capture({}), Ids{});
    EXPECT_EQ(port.contentCalls, 1);
    EXPECT_EQ(capture({}), Ids{});
    EXPECT_EQ(port.contentCalls, 1);
}

TEST_F(CaptureServiceTest, aWarmSnapshotThatHoldsEveryNumberIsReused) {
    port.addWindow(1, {20, 24});
    EXPECT_EQ(capture({1}), Ids{1});
    EXPECT_EQ(capture({1}), Ids{1});
    EXPECT_EQ(port.contentCalls, 1);
    EXPECT_EQ(port.captures.size(), 2U);
}

TEST_F(CaptureServiceTest, aNumberMissingFromAWarmSnapshotCostsExactlyOneRefetch) {
    port.addWindow(1, {20, 24});
    capture({1});
    EXPECT_EQ(capture({1, 2}), Ids{1});
    EXPECT_EQ(port.contentCalls, 2);
    port.addWindow(2, {20, 24});
    EXPECT_EQ(capture({1, 2}), (Ids{1, 2}));
    EXPECT_EQ(port.contentCalls, 3);
}

TEST_F(CaptureServiceTest, aColdCallWhoseWindowIsNotThereYetFetchesTwice) {
    EXPECT_EQ(capture({9}), Ids{});
    EXPECT_EQ(port.contentCalls, 2);
}

TEST_F(CaptureServiceTest, aFailedColdFetchLeavesTheCacheAbsent) {
    port.addWindow(1, {20, 24});
    port.contentReplies = {CaptureReply::failure()};
    EXPECT_EQ(capture({1}), Ids{});
    EXPECT_EQ(port.contentCalls, 1);
    EXPECT_EQ(capture({1}), Ids{1});
    EXPECT_EQ(port.contentCalls, 2);
}

TEST_F(CaptureServiceTest, aFailedSecondFetchKeepsTheFirstSnapshot) {
    port.addWindow(1, {20, 24});
    capture({1});
    port.contentReplies = {CaptureReply::failure()};
    EXPECT_EQ(capture({1, 2}), Ids{1});
    EXPECT_EQ(capture({1}), Ids{1});
    EXPECT_EQ(port.contentCalls, 2);
}

TEST_F(CaptureServiceTest, anInvalidatedCacheIsFetchedAgain) {
    port.addWindow(1, {20, 24});
    capture({1});
    service.invalidateWindowCache();
    capture({1});
    EXPECT_EQ(port.contentCalls, 2);
}

TEST_F(CaptureServiceTest, sizesAreTwiceThePointsRoundedAndNeverBelowTwo) {
    using Pixels = std::pair<int, int>;
    EXPECT_EQ(CaptureService::pixelSize({0.2, 0.2}), (Pixels{2, 2}));
    EXPECT_EQ(CaptureService::pixelSize({22.25, 24}), (Pixels{45, 48}));
    EXPECT_EQ(CaptureService::pixelSize({0, 1.24}), (Pixels{2, 2}));
    EXPECT_EQ(CaptureService::pixelSize({1.25, 22.24}), (Pixels{3, 44}));
}

TEST_F(CaptureServiceTest, sizesThatNoImageCanHaveAreClamped) {
    EXPECT_EQ(CaptureService::pixelSize({std::nan(""), -5}), (std::pair{2, 2}));
    EXPECT_EQ(CaptureService::pixelSize({1e300, 1}).first, 2147483647);
}

TEST_F(CaptureServiceTest, aWindowOfNegativeExtentIsCapturedAtTheSizeOfTheStandardisedOne) {
    port.addWindow(1, {-22.25, -24});
    capture({1});
    EXPECT_EQ(port.captures.at(0).configuration.width, 45);
    EXPECT_EQ(port.captures.at(0).configuration.height, 48);
}

TEST_F(CaptureServiceTest, eachWindowIsCapturedWithoutCursorAtTheBestResolution) {
    port.addWindow(3, {22.25, 24}, {100, 0});
    port.addWindow(1, {0.2, 0.2});
    capture({3, 8, 1});
    using Call = ScriptedScreenCapture::CaptureCall;
    EXPECT_EQ(port.captures, (std::vector<Call>{{3, {45, 48, false, CaptureResolution::best}},
                                                {1, {2, 2, false, CaptureResolution::best}}}));
}

TEST_F(CaptureServiceTest, ofANumberListedTwiceTheFirstWindowIsCaptured) {
    port.addWindow(1, {20, 24});
    port.addWindow(1, {50, 24});
    capture({1});
    EXPECT_EQ(port.captures.at(0).configuration.width, 40);
}

TEST_F(CaptureServiceTest, capturesRunSideBySideAndAFailedOneHasNoEntry) {
    for (const std::uint32_t id : {1U, 2U, 3U})
        port.addWindow(id, {20, 24});
    port.captureReplies[1] = CaptureReply::later(0.5);
    port.captureReplies[2] = CaptureReply::later(0.2, true);
    port.captureReplies[3] = CaptureReply::later(0.1);
    begin({1, 2, 3});
    EXPECT_EQ(port.mostInFlight, 3);
    EXPECT_FALSE(result);
    world.loop.advance(0.5);
    EXPECT_EQ(captured(), (Ids{1, 3}));
}

TEST_F(CaptureServiceTest, aCaptureThatNeverAnswersEndsWithoutImageAfterTwoSeconds) {
    port.addWindow(1, {20, 24});
    port.addWindow(2, {20, 24});
    port.captureReplies[1] = CaptureReply::never();
    begin({1, 2});
    world.loop.advance(1.99);
    EXPECT_FALSE(result);
    world.loop.advance(0.02);
    EXPECT_EQ(captured(), Ids{2});
    port.answerUnanswered(); // too late for anyone
    world.loop.runUntilIdle();
    EXPECT_EQ(captured(), Ids{2});
    EXPECT_EQ(world.loop.timerCount(), 0U);
}

TEST_F(CaptureServiceTest, aDroppedCompletionEndsTheCaptureAtOnce) {
    port.addWindow(1, {20, 24});
    port.captureReply = CaptureReply::drop();
    EXPECT_EQ(capture({1}), Ids{});
}

TEST_F(CaptureServiceTest, aSnapshotThatNeverAnswersCountsAsFailed) {
    port.contentReplies = {CaptureReply::never()};
    begin({1});
    world.loop.advance(2.01);
    EXPECT_EQ(captured(), Ids{});
    EXPECT_TRUE(result);
}

TEST_F(CaptureServiceTest, ofANumberAskedForTwiceTheCaptureThatEndsLastStays) {
    port.addWindow(1, {20, 24});
    port.addWindow(1, {50, 24});
    SlowFirst slow{world.loop, port};
    CaptureService twice{slow, world.accessibility, world.workspace};
    start(world.loop, keep(twice, {1, 1}, result));
    world.loop.advance(1);
    ASSERT_TRUE(result);
    ASSERT_EQ(slow.given.size(), 2U);
    EXPECT_EQ(result->at(1), slow.given.back());
}

TEST_F(CaptureServiceTest, aSnapshotThatArrivesAfterAnInvalidationIsKept) {
    port.addWindow(1, {20, 24});
    port.contentReplies = {CaptureReply::later(0.5)};
    begin({1});
    service.invalidateWindowCache();
    world.loop.advance(0.5);
    EXPECT_EQ(captured(), Ids{1});
    EXPECT_EQ(capture({1}), Ids{1});
    EXPECT_EQ(port.contentCalls, 1);
}

TEST_F(CaptureServiceTest, anInvalidationUnderTheSecondFetchLeavesItsSnapshotInTheCache) {
    capture({});
    port.addWindow(1, {20, 24});
    port.contentReplies = {CaptureReply::later(0.5)};
    begin({1});
    service.invalidateWindowCache();
    world.loop.advance(0.5);
    EXPECT_EQ(captured(), Ids{1});
    EXPECT_EQ(capture({1}), Ids{1});
    EXPECT_EQ(port.contentCalls, 2);
}

TEST_F(CaptureServiceTest, aSecondFetchThatNeverAnswersKeepsTheFirstSnapshot) {
    port.addWindow(1, {20, 24});
    capture({1});
    port.contentReplies = {CaptureReply::never()};
    begin({1, 2});
    world.loop.advance(2.01);
    EXPECT_EQ(captured(), Ids{1});
    EXPECT_EQ(capture({1}), Ids{1});
    EXPECT_EQ(port.contentCalls, 2);
}

TEST_F(CaptureServiceTest, aWindowThatIsGoneByTheTimeOfItsCaptureHasNoEntry) {
    port.addWindow(1, {20, 24});
    port.addWindow(2, {20, 24});
    capture({1, 2});
    port.removeWindow(1);
    EXPECT_EQ(capture({1, 2}), Ids{2});
    EXPECT_EQ(port.contentCalls, 1) << "the snapshot still lists it";
}

TEST_F(CaptureServiceTest, aCaptureNeitherChecksNorAsksForThePermission) {
    port.addWindow(1, {20, 24});
    EXPECT_EQ(capture({1}), Ids{1});
    EXPECT_EQ(world.journal.calls(),
              (std::vector<std::string>{"shareableContent", "captureImage 1"}));
}

TEST_F(CaptureServiceTest, permissionsAreThePortsOwnAnswers) {
    port.accessGranted = false;
    EXPECT_FALSE(service.screenCaptureGranted());
    EXPECT_FALSE(service.requestScreenCapture());
    EXPECT_EQ(port.requestCalls, 1);
    port.accessGranted = true;
    EXPECT_TRUE(service.screenCaptureGranted());
    world.accessibility.trusted = false;
    EXPECT_FALSE(service.accessibilityTrusted());
}

TEST_F(CaptureServiceTest, settingsOpenAtTheirPanes) {
    service.openScreenRecordingSettings();
    service.openAccessibilitySettings();
    EXPECT_EQ(
        world.workspace.opened,
        (std::vector<std::string>{
            "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture",
            "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"}));
}

} // namespace
} // namespace orrivane
