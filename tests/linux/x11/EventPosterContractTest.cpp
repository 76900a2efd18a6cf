#include "support/Desk.h"

#include <linux/x11/X11EventPoster.h>
#include <tests/support/contracts/EventPosterContract.h>

namespace orrivane {
namespace x11 {
namespace {

/// The pointer over another client's window that hears all it does.
class PosterWorld : public DeskWorld {
  public:
    PosterWorld() {
        window_ = app.create({.area = {0, 0, 1512, 982}, .overrideRedirect = true});
        app.listen(window_, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                XCB_EVENT_MASK_POINTER_MOTION);
        app.map(window_);
    }
    EventPoster& poster() { return port().eventPoster; }
    std::vector<ArrivedEvent> arrived() {
        settle();
        app.sync();
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(app.raw())})
            take(*event);
        return arrived_;
    }
    bool isHeld() {
        constexpr unsigned super = XCB_MOD_MASK_4;
        constexpr unsigned button = XCB_BUTTON_MASK_1;
        settle();
        const Owned<xcb_query_pointer_reply_t> reply(
            xcb_query_pointer_reply(app.raw(), xcb_query_pointer(app.raw(), app.root()), nullptr));
        return !reply || (reply->mask & (super | button)) != 0;
    }
    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        return eventually(holds);
    }

  private:
    void take(const xcb_generic_event_t& event) {
        const auto& at = reinterpret_cast<const xcb_button_press_event_t&>(event);
        const Point position{double(at.root_x), double(at.root_y)};
        const bool command = (at.state & XCB_MOD_MASK_4) != 0;
        switch (event.response_type & 0x7F) {
        case XCB_MOTION_NOTIFY:
            arrived_.push_back({(at.state & XCB_BUTTON_MASK_1) != 0
                                    ? MouseEventType::leftMouseDragged
                                    : MouseEventType::mouseMoved,
                                position, command});
            break;
        case XCB_BUTTON_PRESS:
        case XCB_BUTTON_RELEASE:
            // A button event has no place of its own: a motion carries the pointer there.
            if (!arrived_.empty() && arrived_.back().position == position)
                arrived_.pop_back();
            else
                ADD_FAILURE() << "a button event without its motion";
            arrived_.push_back({event.response_type == XCB_BUTTON_PRESS
                                    ? MouseEventType::leftMouseDown
                                    : MouseEventType::leftMouseUp,
                                position, command});
            break;
        default:
            break;
        }
    }

    xcb_window_t window_ = 0;
    std::vector<ArrivedEvent> arrived_;
};

} // namespace
} // namespace x11

INSTANTIATE_TYPED_TEST_SUITE_P(X11, EventPosterContract, x11::PosterWorld);

} // namespace orrivane
