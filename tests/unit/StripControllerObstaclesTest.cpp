#include "StripFixture.h"

namespace orrivane {
namespace {

// What keeps a tick from mirroring, and what it leaves alone and forgets then.
struct Obstacles : StripFixture {
    [[nodiscard]] std::size_t censuses() const { return world.journal.count("allWindows"); }
    /// Hides the strip for one tick; the tick after it shows again.
    void interrupt(const std::function<void()>& obstruct, const std::function<void()>& clear) {
        obstruct();
        post(SystemNotification::didActivateApplication);
        EXPECT_FALSE(shown());
        EXPECT_EQ(controller->mirroredCount(), 0);
        EXPECT_EQ(interval(), 2.0);
        clear();
        post(SystemNotification::didActivateApplication);
        EXPECT_TRUE(shown());
        EXPECT_EQ(interval(), 1.0);
    }
    /// Which of the next ticks capture, after `interrupt`'s own.
    std::vector<bool> capturingTicks(int count) {
        std::vector<bool> result;
        for (int tick = 0; tick < count; ++tick) {
            const auto before = captureCount();
            advance(1);
            result.push_back(captureCount() > before);
        }
        return result;
    }
};

using Flags = std::vector<bool>;

TEST_F(Obstacles, beforeTheCensusEndTheTickWithoutOneAndKeepTheCaches) {
    start();
    const auto screens = world.screens.list;
    auto& enabled = world.userDefaults.stored[std::string(StripController::enabledKey)];
    enabled = true;
    const std::vector<std::pair<std::function<void()>, std::function<void()>>> obstacles{
        {[&] { enabled = false; }, [&] { enabled = true; }},
        {[&] { world.screens.list.clear(); }, [&] { world.screens.list = screens; }},
        {[&] { world.screens.displayIsAsleep = true; },
         [&] { world.screens.displayIsAsleep = false; }},
        {[&] {
             setDefault(StripController::externalKey, false);
             world.screens.list.push_back(ScriptedScreens::plain({{1512, 0}, {1920, 1080}}));
         },
         [&] { world.screens.list = screens; }},
        {[&] { world.screenCapture.accessGranted = false; },
         [&] { world.screenCapture.accessGranted = true; }},
        {[&] { world.accessibility.trusted = false; }, [&] { world.accessibility.trusted = true; }},
    };
    for (const auto& [obstruct, clear] : obstacles) {
        const auto before = censuses();
        interrupt(obstruct, clear);
        EXPECT_EQ(censuses(), before + 1) << "the showing tick's own";
    }
    EXPECT_EQ(ownerWalks(), 1U);
    EXPECT_EQ(captureCount(), 3 * 2U) << "on the ticks 1, 4 and 7 that reached the images";
}

TEST_F(Obstacles, withNothingHiddenNoOtherProgramIsAskedAnything) {
    world.windowList.clear();
    start();
    advance(10);
    EXPECT_EQ(censuses(), 6U);
    EXPECT_EQ(world.accessibility.timeouts.size(), 0U);
    EXPECT_EQ(world.screenCapture.contentCalls, 0);
}

TEST_F(Obstacles, nothingHiddenSetsTheCountOfTicksBackToZero) {
    start();
    const auto all = world.windowList.all;
    interrupt([&] { world.windowList.clear(); }, [&] { world.windowList.all = all; });
    EXPECT_EQ(capturingTicks(4), (Flags{false, false, true, false}));
}

TEST_F(Obstacles, noNotchSetsTheCountOfTicksBackToZero) {
    start();
    const auto screens = world.screens.list;
    interrupt([&] { world.screens.list.front().auxiliaryTopLeftArea.reset(); },
              [&] { world.screens.list = screens; });
    EXPECT_EQ(capturingTicks(4), (Flags{false, false, true, false}));
}

TEST_F(Obstacles, changedScreensDropTheSnapshotAlsoWhileNothingIsHidden) {
    start();
    world.windowList.clear();
    advance(1);
    const auto contents = world.screenCapture.contentCalls;
    post(SystemNotification::didChangeScreenParameters);
    const auto capture = [](CaptureService& service) -> Task<> {
        co_await service.captureIcons(std::vector<std::uint32_t>(1, left));
    };
    orrivane::start(world.loop, capture(captures));
    world.loop.runUntilIdle();
    EXPECT_EQ(world.screenCapture.contentCalls, contents + 1);
}

} // namespace
} // namespace orrivane
