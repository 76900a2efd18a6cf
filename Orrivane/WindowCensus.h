#pragma once

#include <Orrivane/support/Geometry.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orrivane {

class Screens;
class WindowList;

/// One status-item window of the menu bar.
struct StatusItemWindow {
    std::uint32_t id = 0; ///< the window server's window number
    Rect frame;           ///< global points, origin at the primary screen's top left, y down
    bool isOnscreen = false;
    bool isEaten = false; ///< the notch covers the window

    friend bool operator==(const StatusItemWindow&, const StatusItemWindow&) = default;
};

/// The geometry of the notched screen, in points; x is global.
struct NotchInfo {
    double screenWidth = 0;
    double screenMinX = 0;
    double menuBarHeight = 0; ///< the screen's top safe-area inset
    double notchMinX = 0;
    double notchMaxX = 0;

    friend bool operator==(const NotchInfo&, const NotchInfo&) = default;
};

/// The outcome of one census: a value, free to be handed about.
struct CensusResult {
    std::optional<NotchInfo> notch;
    std::vector<StatusItemWindow> items; ///< ascending left edge, ties in window-list order

    /// The members of `items` that the notch covers, in their order; made anew on every call.
    [[nodiscard]] std::vector<StatusItemWindow> eaten() const;
};

/// One screen, in the system's order: the first one is the primary screen.
struct ScreenDescription {
    Rect frame;                                ///< points, origin at the bottom left, y up
    double safeAreaTop = 0;                    ///< greater than 0 only beside a camera housing
    std::optional<Rect> auxiliaryTopLeftArea;  ///< unobscured bar left of the housing, y up
    std::optional<Rect> auxiliaryTopRightArea; ///< unobscured bar right of the housing, y up

    friend bool operator==(const ScreenDescription&, const ScreenDescription&) = default;
};

/// One entry of a window-server list. A value that is missing or of the wrong type is absent.
struct WindowListEntry {
    std::optional<std::int64_t> layer;
    std::optional<std::uint32_t> number;
    std::optional<Rect> bounds; ///< global points, top-left origin, y down
    std::optional<bool> onscreen;

    friend bool operator==(const WindowListEntry&, const WindowListEntry&) = default;
};

/// The program's one view of the menu bar. Stateless: every call takes a fresh snapshot. It never
/// fails: unreadable lists are empty, malformed entries are skipped, a notch that cannot be
/// measured is absent.
struct WindowCensus {
    /// Reads the screens and both lists of the installed platform. Main thread only.
    static CensusResult take();
    static CensusResult take(Screens& screens, WindowList& windows);

    /// One pass over each list, hash look-ups, nothing allocated for a dropped entry.
    static CensusResult take(std::span<const ScreenDescription> screens,
                             std::span<const WindowListEntry> all,
                             std::span<const WindowListEntry> onscreen);

    /// The first screen with a camera housing; null when there is none. Points into `screens`.
    static const ScreenDescription* notchedScreen(std::span<const ScreenDescription> screens);

    /// The layer that the window server gives status items' windows, and no others.
    static constexpr std::int64_t statusLayer = 25;
};

} // namespace orrivane
