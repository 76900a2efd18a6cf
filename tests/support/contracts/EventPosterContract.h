#pragma once

#include <Orrivane/platform/EventPoster.h>
#include <tests/support/contracts/Contract.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace orrivane {

/// An event as it arrived in the system; `command` is whether the Command key was held with it.
struct ArrivedEvent {
    MouseEventType type = MouseEventType::mouseMoved;
    Point position; ///< global top-left-origin points
    bool command = false;

    friend bool operator==(const ArrivedEvent&, const ArrivedEvent&) = default;
};

/// The world also offers: `EventPoster& poster()`, `std::vector<ArrivedEvent> arrived()` and
/// `bool isHeld()` (the system sees the left button or the Command key held down). A world whose
/// sources post nothing when they die has a `static constexpr bool sourcesLetGo = false`.
template <typename World>
class EventPosterContract : public Contract<World> {
  protected:
    using Events = std::vector<ArrivedEvent>;

    void post(EventSource* source, MouseEventType type, Point position, std::uint64_t flags) {
        const auto event = this->world.poster().createMouseEvent(source, type, position);
        ASSERT_TRUE(event);
        this->world.poster().setFlags(*event, flags);
        this->world.poster().post(*event);
    }
    bool arrive(std::size_t count) {
        return this->world.pumpUntil([&] { return this->world.arrived().size() >= count; });
    }
    bool released() {
        return this->world.pumpUntil([&] { return !this->world.isHeld(); });
    }

    static constexpr std::uint64_t command = 0x100000;
};

TYPED_TEST_SUITE_P(EventPosterContract);

TYPED_TEST_P(EventPosterContract, aDragWithCommandArrivesInItsOrder) {
    auto source = this->world.poster().createSource();
    ASSERT_TRUE(source);
    this->post(source.get(), MouseEventType::leftMouseDown, {300, 12}, this->command);
    this->post(source.get(), MouseEventType::leftMouseDragged, {290, 12}, this->command);
    this->post(source.get(), MouseEventType::leftMouseDragged, {200, 12}, this->command);
    this->post(source.get(), MouseEventType::leftMouseUp, {200, 12}, this->command);
    ASSERT_TRUE(this->arrive(4));
    EXPECT_EQ(this->world.arrived(),
              (typename TestFixture::Events{{MouseEventType::leftMouseDown, {300, 12}, true},
                                            {MouseEventType::leftMouseDragged, {290, 12}, true},
                                            {MouseEventType::leftMouseDragged, {200, 12}, true},
                                            {MouseEventType::leftMouseUp, {200, 12}, true}}));
    source.reset();
    EXPECT_TRUE(this->released());
}

TYPED_TEST_P(EventPosterContract, anEventWithoutFlagsArrivesWithoutCommand) {
    const auto source = this->world.poster().createSource();
    this->post(source.get(), MouseEventType::mouseMoved, {120, 30}, 0);
    ASSERT_TRUE(this->arrive(1));
    EXPECT_EQ(this->world.arrived(),
              (typename TestFixture::Events{{MouseEventType::mouseMoved, {120, 30}, false}}));
}

TYPED_TEST_P(EventPosterContract, anEventThatIsNotPostedDoesNotArrive) {
    const auto source = this->world.poster().createSource();
    const auto kept = this->world.poster().createMouseEvent(
        source.get(), MouseEventType::leftMouseDown, {10, 10});
    ASSERT_TRUE(kept);
    this->post(source.get(), MouseEventType::mouseMoved, {120, 30}, 0);
    ASSERT_TRUE(this->arrive(1));
    EXPECT_EQ(this->world.arrived().front().type, MouseEventType::mouseMoved);
    EXPECT_FALSE(this->world.isHeld());
}

TYPED_TEST_P(EventPosterContract, eventsMayBeMadeWithoutASource) {
    this->post(nullptr, MouseEventType::mouseMoved, {50, 60}, 0);
    ASSERT_TRUE(this->arrive(1));
    EXPECT_EQ(this->world.arrived().front().position, (Point{50, 60}));
}

TYPED_TEST_P(EventPosterContract, releasingTheSourceLetsGoWhereModifiersAreKeys) {
    auto source = this->world.poster().createSource();
    ASSERT_TRUE(source);
    this->post(source.get(), MouseEventType::leftMouseDown, {300, 12}, this->command);
    ASSERT_TRUE(this->world.pumpUntil([&] { return this->world.isHeld(); }));
    const auto before = this->world.arrived().size();
    source.reset();
    if constexpr (requires { requires !TypeParam::sourcesLetGo; }) {
        EXPECT_EQ(this->world.arrived().size(), before);
    } else {
        EXPECT_TRUE(this->released());
    }
}

REGISTER_TYPED_TEST_SUITE_P(EventPosterContract, aDragWithCommandArrivesInItsOrder,
                            anEventWithoutFlagsArrivesWithoutCommand,
                            anEventThatIsNotPostedDoesNotArrive, eventsMayBeMadeWithoutASource,
                            releasingTheSourceLetsGoWhereModifiersAreKeys);

} // namespace orrivane
