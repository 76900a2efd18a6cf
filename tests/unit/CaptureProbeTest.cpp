#include <Orrivane/CaptureProbe.h>
#include <Orrivane/DiagnosisWithCaptures.h>

#include "DiagnosisFixture.h"

#include <tests/support/ScriptedImage.h>

namespace orrivane {
namespace {

/// A diagnosis that also captures, run to its end.
struct CaptureProbeTest : DiagnosisFixture {
    int timesDone = 0;

    std::optional<CaptureProbes> probe() {
        std::optional<CaptureProbes> result;
        DiagnosisWithCaptures program(world.platform(), take(), [&](const Diagnosis& diagnosis) {
            result = diagnosis.captures;
            ++timesDone;
            EXPECT_EQ(world.workspace.terminations, 0);
        });
        program.applicationDidFinishLaunching();
        world.loop.advance(60);
        EXPECT_EQ(timesDone, 1);
        EXPECT_EQ(world.workspace.terminations, 1);
        return result;
    }
    void offer(std::uint32_t id) { world.screenCapture.addWindow(id, {30, 37}); }
};

TEST_F(CaptureProbeTest, itSaysWhatBecameOfEveryItemsPicture) {
    offer(11);
    offer(12);
    world.screenCapture.addWindow(99, {800, 600}); // no item
    world.screenCapture.images.emplace(11, ScriptedImage::make(60, 74, true));
    world.screenCapture.captureReplies[12] = CaptureReply::failure();
    const auto probes = probe();
    ASSERT_TRUE(probes);
    EXPECT_EQ(probes->snapshotSize, 3U);
    EXPECT_EQ(probes->windows, (std::vector<CaptureProbe>{
                                   {11, true, CaptureProbe::Picture{60, 74, true}},
                                   {12, true, std::nullopt},
                                   {13, false, std::nullopt},
                               }));
    EXPECT_EQ(world.screenCapture.captures.size(), 2U);
}

TEST_F(CaptureProbeTest, picturesAreAskedForAsTheTrayAsksForThem) {
    offer(11);
    const auto probes = probe();
    ASSERT_EQ(world.screenCapture.captures.size(), 1U);
    EXPECT_EQ(world.screenCapture.captures[0].configuration,
              (CaptureConfiguration{60, 74, false, CaptureResolution::best}));
    EXPECT_EQ(probes->windows[0].picture, (CaptureProbe::Picture{60, 74, std::nullopt}));
}

TEST_F(CaptureProbeTest, aWindowOfNegativeExtentIsAskedForAtTheSizeOfTheStandardisedOne) {
    world.screenCapture.addWindow(11, {-30, -37});
    probe();
    ASSERT_EQ(world.screenCapture.captures.size(), 1U);
    EXPECT_EQ(world.screenCapture.captures[0].configuration,
              (CaptureConfiguration{60, 74, false, CaptureResolution::best}));
}

TEST_F(CaptureProbeTest, withoutThePermissionNothingIsAsked) {
    offer(11);
    world.screenCapture.accessGranted = false;
    EXPECT_EQ(probe(), CaptureProbes{});
    EXPECT_EQ(world.screenCapture.contentCalls, 0);
}

TEST_F(CaptureProbeTest, aSystemThatNeverAnswersIsGivenUp) {
    world.screenCapture.contentReply = CaptureReply::never();
    EXPECT_EQ(probe(), CaptureProbes{});
    world.screenCapture.dropUnanswered();
}

TEST_F(CaptureProbeTest, aPictureThatNeverComesCostsTheOthersNothingButTime) {
    offer(11);
    offer(12);
    world.screenCapture.captureReplies[11] = CaptureReply::never();
    const auto probes = probe();
    ASSERT_EQ(probes->windows.size(), 3U);
    EXPECT_EQ(probes->windows[0].picture, std::nullopt);
    EXPECT_TRUE(probes->windows[1].picture);
    world.screenCapture.dropUnanswered();
}

} // namespace
} // namespace orrivane
