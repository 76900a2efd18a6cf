#include "support/Desk.h"

#include <Orrivane/MoveEngine.h>
#include <linux/x11/X11EventPoster.h>
#include <tests/support/ScriptedLog.h>

namespace orrivane::x11 {
namespace {

constexpr auto command = X11EventPoster::commandFlag;
constexpr unsigned superMask = XCB_MOD_MASK_4;
constexpr unsigned buttonMask = XCB_BUTTON_MASK_1;

struct Arrived {
    std::uint8_t type;
    int x;
    int y;
    bool super; ///< held when it happened

    friend bool operator==(const Arrived&, const Arrived&) = default;
};

std::ostream& operator<<(std::ostream& out, const Arrived& each) {
    return out << int(each.type) << " at " << each.x << ',' << each.y
               << (each.super ? " super" : "");
}

/// The pointer over a window that hears all it does.
class EventPosterTest : public Desk {
  protected:
    EventPosterTest() {
        window = app.create({.area = {0, 0, 1512, 982}, .overrideRedirect = true});
        app.listen(window, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                               XCB_EVENT_MASK_POINTER_MOTION);
        app.map(window);
    }
    EventPoster& poster() { return port().eventPoster; }
    void post(MouseEventType type, Point position, std::uint64_t flags = command) {
        const auto event = poster().createMouseEvent(nullptr, type, position);
        ASSERT_TRUE(event);
        poster().setFlags(*event, flags);
        poster().post(*event);
    }
    std::vector<Arrived> arrived() {
        settle();
        app.sync();
        std::vector<Arrived> result;
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(app.raw())}) {
            const auto type = static_cast<std::uint8_t>(event->response_type & 0x7F);
            if (type != XCB_BUTTON_PRESS && type != XCB_BUTTON_RELEASE && type != XCB_MOTION_NOTIFY)
                continue;
            const auto& at = reinterpret_cast<const xcb_button_press_event_t&>(*event);
            result.push_back({type, at.root_x, at.root_y, (at.state & XCB_MOD_MASK_4) != 0});
        }
        return result;
    }
    /// What the server sees held now: buttons and modifiers.
    unsigned held() {
        settle();
        const Owned<xcb_query_pointer_reply_t> reply(
            xcb_query_pointer_reply(app.raw(), xcb_query_pointer(app.raw(), app.root()), nullptr));
        return reply ? reply->mask & (superMask | buttonMask) : ~0U;
    }

    /// Takes the symbol from every key that has it.
    void removeKeys(xcb_keysym_t symbol) {
        const auto* setup = xcb_get_setup(app.raw());
        const auto first = setup->min_keycode;
        const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
        const Owned<xcb_get_keyboard_mapping_reply_t> keys(xcb_get_keyboard_mapping_reply(
            app.raw(), xcb_get_keyboard_mapping(app.raw(), first, count), nullptr));
        ASSERT_TRUE(keys);
        auto* symbols = xcb_get_keyboard_mapping_keysyms(keys.get());
        const auto length = xcb_get_keyboard_mapping_keysyms_length(keys.get());
        ASSERT_NE(std::count(symbols, symbols + length, symbol), 0);
        std::replace(symbols, symbols + length, symbol, xcb_keysym_t{XCB_NO_SYMBOL});
        xcb_change_keyboard_mapping(app.raw(), count, first, keys->keysyms_per_keycode, symbols);
        app.sync();
    }
    bool playMove(ScriptedLog& log) {
        bool result = false;
        const auto task =
            start(loop, [](EventPoster& to, SystemLog& journal, bool& moved) -> Task<> {
                StatusItemWindow item;
                item.frame = {{700, 0}, {30, 24}};
                moved = co_await MoveEngine::move(item, 900, to, journal);
            }(poster(), log, result));
        loop.advance(5);
        return result;
    }

    xcb_window_t window = 0;
};

TEST_F(EventPosterTest, aDragHoldsSuperFromItsFirstEventToItsLast) {
    auto source = poster().createSource();
    ASSERT_TRUE(source);
    arrived();
    post(MouseEventType::leftMouseDown, {300, 12});
    EXPECT_EQ(held(), superMask | buttonMask);
    post(MouseEventType::leftMouseDragged, {200, 12});
    post(MouseEventType::leftMouseUp, {200, 12});
    EXPECT_EQ(arrived(), (std::vector<Arrived>{{XCB_MOTION_NOTIFY, 300, 12, true},
                                               {XCB_BUTTON_PRESS, 300, 12, true},
                                               {XCB_MOTION_NOTIFY, 200, 12, true},
                                               {XCB_MOTION_NOTIFY, 200, 12, true},
                                               {XCB_BUTTON_RELEASE, 200, 12, true}}));
    EXPECT_EQ(held(), superMask);
    source.reset();
    EXPECT_EQ(held(), 0U);
}

TEST_F(EventPosterTest, theSourcesEndLetsGoOfWhatIsStillHeld) {
    auto source = poster().createSource();
    post(MouseEventType::leftMouseDown, {300, 12});
    source.reset();
    EXPECT_EQ(held(), 0U);
}

TEST_F(EventPosterTest, soDoesThePortsEnd) {
    auto source = poster().createSource();
    {
        X11EventPoster other(open(), port().screens);
        const auto event = other.createMouseEvent(nullptr, MouseEventType::leftMouseDown, {5, 5});
        other.setFlags(*event, command);
        other.post(*event);
        ASSERT_NE(held(), 0U);
    }
    EXPECT_EQ(held(), 0U);
}

TEST_F(EventPosterTest, anEventWithoutTheFlagLetsGoOfSuper) {
    auto source = poster().createSource();
    post(MouseEventType::mouseMoved, {100, 100});
    ASSERT_EQ(held(), superMask);
    post(MouseEventType::mouseMoved, {120, 100}, 0);
    EXPECT_EQ(held(), 0U);
}

TEST_F(EventPosterTest, pointsBecomeDevicePixels) {
    scale = 2;
    auto source = poster().createSource();
    arrived();
    post(MouseEventType::mouseMoved, {100.25, 6});
    EXPECT_EQ(arrived(), (std::vector<Arrived>{{XCB_MOTION_NOTIFY, 201, 12, true}}));
}

TEST_F(EventPosterTest, positionsThatAreNoNumbersOrFarAwayHarmNobody) {
    auto source = poster().createSource();
    post(MouseEventType::mouseMoved, {std::numeric_limits<double>::quiet_NaN(), 1e300});
    post(MouseEventType::mouseMoved, {50, 50});
    EXPECT_EQ(arrived().back(), (Arrived{XCB_MOTION_NOTIFY, 50, 50, true}));
}

TEST_F(EventPosterTest, aMoveIsPlayedWholeAndLeavesNothingPressed) {
    ScriptedLog log;
    poster();
    arrived();
    EXPECT_TRUE(playMove(log));
    const auto all = arrived();
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.back(), (Arrived{XCB_BUTTON_RELEASE, 900, 12, true}));
    EXPECT_EQ(std::ranges::count(all, XCB_BUTTON_PRESS, &Arrived::type), 1);
    EXPECT_TRUE(std::ranges::all_of(all, &Arrived::super));
    EXPECT_EQ(held(), 0U);
}

TEST_F(EventPosterTest, whereNoKeyIsSuperAMoveFailsAndClicksNothing) {
    removeKeys(0xffeb);
    ScriptedLog log;
    EXPECT_EQ(poster().createSource(), nullptr);
    arrived();
    EXPECT_FALSE(playMove(log));
    EXPECT_TRUE(arrived().empty());
    EXPECT_EQ(log.lines,
              std::vector<std::string>{"MoveEngine: failed to create CGEvent of type 1"});
    EXPECT_TRUE(poster().createMouseEvent(nullptr, MouseEventType::mouseMoved, {5, 5}));
}

TEST_F(EventPosterTest, aKeyThatIsTakenAwayDuringAGestureIsStillLetGo) {
    auto source = poster().createSource();
    post(MouseEventType::leftMouseDown, {300, 12});
    ASSERT_EQ(held(), superMask | buttonMask);
    removeKeys(0xffeb);
    EXPECT_FALSE(poster().createMouseEvent(nullptr, MouseEventType::leftMouseDragged, {290, 12}));
    source.reset();
    EXPECT_EQ(held(), 0U);
}

} // namespace
} // namespace orrivane::x11
