#include "ProgramWindows.h"

#include "WaitFor.h"

namespace orrivane::e2e {

bool ProgramWindows::own(const WindowState& window) {
    return window.isViewable() && observer_.pidOf(window.id) == program_;
}

std::optional<WindowState> ProgramWindows::icon() {
    for (const auto& icon : observer_.trayIcons())
        if (own(icon))
            return icon;
    return std::nullopt;
}

std::optional<WindowState> ProgramWindows::large(int width, int height) {
    for (const auto& each : observer_.tree())
        if (each.area.width >= width && each.area.height >= height && own(each))
            return each;
    return std::nullopt;
}

std::optional<WindowState> ProgramWindows::dialogOver(xcb_window_t window) {
    constexpr int wider = 150; // pixels; Qt has tiny helpers of the same type
    constexpr int higher = 60;
    for (const auto& each : observer_.tree())
        if (each.id != window && each.type == "_NET_WM_WINDOW_TYPE_DIALOG" &&
            each.area.width > wider && each.area.height > higher && own(each))
            return each;
    return std::nullopt;
}

WindowState ProgramWindows::largeAtRest(int width, int height) {
    // Longer than the window manager and the first look at the tray take to change its height.
    constexpr std::chrono::milliseconds rest{700};
    return waitForValue<WindowState>("the window has come to rest", [&] {
        const auto before = large(width, height);
        const bool rests =
            before && staysTrue("it rests", [&] { return large(width, height) == before; }, rest);
        return rests && observer_.activeWindow() == before->id ? before : std::nullopt;
    });
}

} // namespace orrivane::e2e
