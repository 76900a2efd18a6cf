#pragma once

#include <Orrivane/platform/Screens.h>
#include <tests/support/CallJournal.h>

#include <utility>

namespace orrivane {

/// Screens as a test describes them. Bars take the top inset, or 24 points, of every screen.
class ScriptedScreens : public Screens {
  public:
    explicit ScriptedScreens(CallJournal calls = {})
        : journal(std::move(calls)) {}

    std::vector<ScreenDescription> list;
    std::size_t mainIndex = 0;
    bool displayIsAsleep = false;
    double barHeight = 24; ///< points, on screens without an inset
    CallJournal journal;

    /// One screen of this size whose camera housing covers [notchMinX, notchMaxX] of its top.
    static ScreenDescription notched(Size size = {1512, 982}, double inset = 37,
                                     double notchMinX = 660, double notchMaxX = 850) {
        const double y = size.height - inset;
        return {.frame = {{0, 0}, size},
                .safeAreaTop = inset,
                .auxiliaryTopLeftArea = Rect{{0, y}, {notchMinX, inset}},
                .auxiliaryTopRightArea = Rect{{notchMaxX, y}, {size.width - notchMaxX, inset}}};
    }
    static ScreenDescription plain(Rect frame = {{0, 0}, {1920, 1080}}) {
        return {.frame = frame,
                .safeAreaTop = 0,
                .auxiliaryTopLeftArea = std::nullopt,
                .auxiliaryTopRightArea = std::nullopt};
    }

    std::vector<ScreenDescription> screens() override {
        journal.note("screens");
        return list;
    }
    std::optional<ScreenDescription> mainScreen() override {
        journal.note("mainScreen");
        if (mainIndex >= list.size())
            return std::nullopt;
        return list[mainIndex];
    }
    Rect visibleFrame(const ScreenDescription& screen) override {
        journal.note("visibleFrame");
        const double top = screen.safeAreaTop > 0 ? screen.safeAreaTop : barHeight;
        return {{screen.frame.minX(), screen.frame.minY()},
                {screen.frame.width(), screen.frame.height() - top}};
    }
    bool mainDisplayIsAsleep() override {
        journal.note("mainDisplayIsAsleep");
        return displayIsAsleep;
    }
};

} // namespace orrivane
