#include <macos/system/CGEventPoster.h>

#include <Orrivane/MoveEngine.h>
#include <tests/macos/fakes/EventSystem.h>
#include <tests/macos/fakes/Session.h>
#include <tests/support/CoroutineTest.h>
#include <tests/support/ScriptedLog.h>

#include <algorithm>
#include <memory>

namespace orrivane {
namespace {

constexpr CGEventFlags command = 0x100000;

struct CGEventPosterTest : CoroutineTest {
    fakes::Session session; // before whatever holds objects
    fakes::EventSystem& system = fakes::EventSystem::shared();
    std::unique_ptr<CGEventPoster> poster = std::make_unique<CGEventPoster>();

    void post(EventSource* source, MouseEventType type, Point position,
              std::uint64_t flags = command) {
        const auto event = poster->createMouseEvent(source, type, position);
        ASSERT_TRUE(event);
        poster->setFlags(*event, flags);
        poster->post(*event);
    }
    void expectArrived(std::size_t index, CGEventType type, Point position, CGEventFlags flags) {
        ASSERT_LT(index, system.arrived.size());
        const auto& event = system.arrived[index];
        EXPECT_EQ(event.type, type) << index;
        EXPECT_EQ(event.position.x, position.x) << index;
        EXPECT_EQ(event.position.y, position.y) << index;
        EXPECT_EQ(event.flags, flags) << index;
    }
};

TEST_F(CGEventPosterTest, coordinatesAreHandedOnUnchanged) {
    post(nullptr, MouseEventType::mouseMoved, {-1200.25, 12.5}, 0);
    expectArrived(0, kCGEventMouseMoved, {-1200.25, 12.5}, 0);
}

TEST_F(CGEventPosterTest, flagsReplaceTheModifiersThatHappenToBeHeld) {
    system.hardwareModifiers = 0x20000;
    const auto source = poster->createSource();
    post(source.get(), MouseEventType::mouseMoved, {1, 1}, command);
    post(source.get(), MouseEventType::mouseMoved, {1, 1}, 0);
    expectArrived(0, kCGEventMouseMoved, {1, 1}, command);
    expectArrived(1, kCGEventMouseMoved, {1, 1}, 0);
}

TEST_F(CGEventPosterTest, aSourceOrAnEventThatTheSystemRefusesIsNull) {
    system.refusesSources = true;
    EXPECT_EQ(poster->createSource(), nullptr);
    system.eventsLeft = 0;
    for (const auto type : {MouseEventType::leftMouseDown, MouseEventType::leftMouseDragged,
                            MouseEventType::leftMouseUp})
        EXPECT_EQ(poster->createMouseEvent(nullptr, type, {1, 1}), nullptr);
}

TEST_F(CGEventPosterTest, aGestureThatBreaksOffPostsNothingMore) {
    auto source = poster->createSource();
    post(source.get(), MouseEventType::leftMouseDown, {300, 12});
    post(source.get(), MouseEventType::leftMouseDragged, {250, 12});
    source.reset();
    poster->releaseAll();
    poster.reset();
    EXPECT_EQ(system.arrived.size(), 2U);
}

TEST_F(CGEventPosterTest, aProgramThatEndsLetsGoWhereTheDragHadCome) {
    const auto source = poster->createSource();
    post(source.get(), MouseEventType::leftMouseDown, {300, 12});
    post(source.get(), MouseEventType::leftMouseDragged, {250, 12});
    system.eventsLeft = 0;
    poster->releaseAll();
    ASSERT_EQ(system.arrived.size(), 3U);
    expectArrived(2, kCGEventLeftMouseUp, {250, 12}, command);
    EXPECT_FALSE(system.isButtonHeld);
}

TEST_F(CGEventPosterTest, aPressIsMadeEvenIfItsReleaseCannotBe) {
    system.eventsLeft = 1;
    post(nullptr, MouseEventType::leftMouseDown, {1, 1});
    poster->releaseAll();
    EXPECT_EQ(system.arrived.size(), 1U);
}

TEST_F(CGEventPosterTest, whatWasReleasedIsNotReleasedAgain) {
    auto source = poster->createSource();
    post(source.get(), MouseEventType::leftMouseDown, {300, 12});
    post(source.get(), MouseEventType::leftMouseUp, {300, 12});
    source.reset();
    poster->releaseAll();
    poster.reset();
    EXPECT_EQ(system.arrived.size(), 2U);
}

TEST_F(CGEventPosterTest, aPressThatWasNeverPostedHoldsNothing) {
    auto source = poster->createSource();
    const auto press =
        poster->createMouseEvent(source.get(), MouseEventType::leftMouseDown, {300, 12});
    source.reset();
    EXPECT_TRUE(system.arrived.empty());
}

TEST_F(CGEventPosterTest, anEventOutlivesItsSource) {
    auto source = poster->createSource();
    const auto moved =
        poster->createMouseEvent(source.get(), MouseEventType::mouseMoved, {300, 12});
    ASSERT_TRUE(moved);
    source.reset();
    poster->post(*moved);
    expectArrived(0, kCGEventMouseMoved, {300, 12}, 0);
}

TEST_F(CGEventPosterTest, aButtonPressedWithoutASourceIsLetGoWithThePoster) {
    post(nullptr, MouseEventType::leftMouseDown, {300, 12});
    EXPECT_TRUE(system.isButtonHeld);
    poster.reset();
    EXPECT_FALSE(system.isButtonHeld);
}

TEST_F(CGEventPosterTest, aProgramThatEndsAmidADragCanLetGoByItself) {
    auto source = poster->createSource();
    post(source.get(), MouseEventType::leftMouseDown, {300, 12});
    poster->releaseAll();
    EXPECT_FALSE(system.isButtonHeld);
    EXPECT_EQ(system.arrived.size(), 2U);
    source.reset();
    poster.reset();
    EXPECT_EQ(system.arrived.size(), 2U);
}

TEST_F(CGEventPosterTest, aWholeMoveArrivesWithCommandAndLeavesNothingHeld) {
    ScriptedLog log;
    const StatusItemWindow item{7, {{985, 0}, {30, 24}}, true, false};
    EXPECT_EQ(expectCompletesWithin(1, MoveEngine::move(item, 700, *poster, log)), true);
    ASSERT_EQ(system.arrived.size(), 14U);
    expectArrived(0, kCGEventLeftMouseDown, {1000, 12}, command);
    for (std::size_t i = 1; i < 13; ++i)
        EXPECT_EQ(system.arrived[i].type, kCGEventLeftMouseDragged) << i;
    expectArrived(13, kCGEventLeftMouseUp, {700, 12}, command);
    EXPECT_FALSE(system.isButtonHeld);
}

TEST_F(CGEventPosterTest, aMoveThatFailsHalfwaySendsNoRelease) {
    ScriptedLog log;
    const StatusItemWindow item{7, {{985, 0}, {30, 24}}, true, false};
    std::optional<bool> moved;
    const auto handle = expectSuspends(MoveEngine::move(item, 700, *poster, log), moved);
    EXPECT_TRUE(system.isButtonHeld);
    system.eventsLeft = 0;
    loop.advance(1);
    EXPECT_EQ(moved, false);
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"MoveEngine: failed to create CGEvent of type 6"}));
    ASSERT_FALSE(system.arrived.empty());
    EXPECT_NE(system.arrived.back().type, kCGEventLeftMouseUp);
}

} // namespace
} // namespace orrivane
