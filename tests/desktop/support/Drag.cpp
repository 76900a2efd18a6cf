#include "Drag.h"

#include "WaitFor.h"

#include <optional>
#include <set>

namespace orrivane::e2e {

namespace {

/// Popups of the program that were not there before the press.
class CarriedPicture {
  public:
    CarriedPicture(Observer& observer, pid_t program)
        : observer_(observer)
        , program_(program) {
        for (const auto& window : observer.topLevels())
            if (window.isViewable())
                before_.insert(window.id);
    }
    /// It keeps its distance from the pointer: one that merely reaches the place has yet to follow.
    bool isAt(const PixelPoint& place) {
        for (const auto& window : observer_.topLevels()) {
            if (!window.isViewable() || !window.overrideRedirect || before_.contains(window.id) ||
                !window.area.contains(place) || observer_.pidOf(window.id) != program_)
                continue;
            const PixelPoint hold{place.x - window.area.x, place.y - window.area.y};
            if (!hold_)
                hold_ = hold;
            return hold == *hold_;
        }
        return false;
    }

  private:
    Observer& observer_;
    pid_t program_;
    std::set<xcb_window_t> before_;
    std::optional<PixelPoint> hold_; ///< where in the picture the pointer is
};

} // namespace

testing::AssertionResult dragByHand(Observer& observer, pid_t program, const PixelPoint& from,
                                    const PixelPoint& to) {
    constexpr int steps = 4; // longer than any toolkit asks for before it takes a drag for one
    observer.movePointer(from);
    CarriedPicture picture(observer, program);
    observer.button(1, true);
    auto result = testing::AssertionSuccess();
    for (int step = 1; step <= steps && result; ++step) {
        const PixelPoint place{from.x + (to.x - from.x) * step / steps,
                               from.y + (to.y - from.y) * step / steps};
        observer.movePointer(place);
        result = waitFor("the picture comes along", [&] { return picture.isAt(place); });
    }
    observer.button(1, false);
    return result;
}

} // namespace orrivane::e2e
