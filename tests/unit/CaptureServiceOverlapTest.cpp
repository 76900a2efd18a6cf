#include <Orrivane/CaptureService.h>

#include <tests/support/ScriptedPlatform.h>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

using Ids = std::vector<std::uint32_t>;
using Result = std::optional<CaptureService::Images>;

// Two calls under way at once share one cache.
struct OverlappingCaptures : testing::Test {
    ScriptedPlatform world;
    ScriptedScreenCapture& port = world.screenCapture;
    CaptureService service{world.screenCapture, world.accessibility, world.workspace};
    Result first;
    Result second;

    OverlappingCaptures() {
        port.addWindow(1, {20, 24});
        port.addWindow(2, {20, 24});
    }
    static Task<> keep(CaptureService& from, Ids ids, Result& result) {
        result = co_await from.captureIcons(std::move(ids));
    }
    void captureBoth() {
        start(world.loop, keep(service, {1}, first));
        start(world.loop, keep(service, {2}, second));
        world.loop.advance(1);
        ASSERT_TRUE(first && second);
    }
    /// Snapshots taken for one more call.
    int snapshotsForAnother() {
        const int before = port.contentCalls;
        start(world.loop, keep(service, {1}, first));
        world.loop.runUntilIdle();
        EXPECT_TRUE(first->contains(1));
        return port.contentCalls - before;
    }
};

TEST_F(OverlappingCaptures, eachGetsItsOwnImages) {
    port.contentReply = CaptureReply::later(0.1);
    captureBoth();
    EXPECT_TRUE(first->contains(1));
    EXPECT_TRUE(second->contains(2));
    EXPECT_EQ(port.contentCalls, 2);
}

TEST_F(OverlappingCaptures, ofTwoColdFetchesAFailureThatEndsLastLeavesTheCacheAbsent) {
    port.contentReplies = {CaptureReply::later(0.5, true), CaptureReply::later(0.1)};
    captureBoth();
    EXPECT_TRUE(first->empty());
    EXPECT_TRUE(second->contains(2));
    EXPECT_EQ(snapshotsForAnother(), 1);
}

TEST_F(OverlappingCaptures, ofTwoColdFetchesASuccessThatEndsLastStays) {
    port.contentReplies = {CaptureReply::later(0.5), CaptureReply::later(0.1, true)};
    captureBoth();
    EXPECT_TRUE(first->contains(1));
    EXPECT_TRUE(second->empty());
    EXPECT_EQ(snapshotsForAnother(), 0);
}

} // namespace
} // namespace orrivane
