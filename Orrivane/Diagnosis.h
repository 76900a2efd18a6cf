#pragma once

#include <Orrivane/CaptureProbe.h>
#include <Orrivane/ExtrasBar.h>
#include <Orrivane/WindowCensus.h>
#include <Orrivane/platform/Accessibility.h>
#include <Orrivane/platform/WindowList.h>
#include <Orrivane/platform/Workspace.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {

class GlobalPreferences;
class Screens;
struct Platform;

/// What a tick would see and do now, and why: for users who ask for help and for those who give it.
struct Diagnosis {
    struct Item {
        StatusItemWindow window;
        std::string application; ///< empty: nobody owns up to it
        std::int32_t process = 0;
        std::string reason; ///< why it is not mirrored; empty: it is

        friend bool operator==(const Item&, const Item&) = default;
    };

    /// What is asked beside a screen's description.
    struct ScreenPlace {
        Rect visibleFrame; ///< points, origin at the bottom left, y up
        bool isMain = false;

        friend bool operator==(const ScreenPlace&, const ScreenPlace&) = default;
    };

    std::string version;
    VersionStrings bundle; ///< as the system knows the program
    std::vector<ScreenDescription> screens;
    std::vector<ScreenPlace> screenPlaces; ///< of the same screens
    std::optional<RunningApplication> menuBarOwner;
    std::optional<RunningApplication> frontmost;
    bool displayAsleep = false;
    std::optional<NotchInfo> notch;
    std::vector<Item> items;              ///< in menu-bar order
    std::vector<OwnedWindow> windows;     ///< whose top is near a screen's, in the list's order
    std::vector<std::int64_t> ownWindows; ///< raw numbers, of this process
    std::vector<ExtrasBar> extrasBars;
    std::optional<CaptureProbes> captures; ///< absent: not asked for
    std::optional<double> menuWidth;       ///< points
    bool screenCaptureGranted = false;
    bool accessibilityTrusted = false;
    bool stripEnabled = false;
    bool mirrorOnExternal = false;
    std::optional<std::int64_t> spacing; ///< stored; preference units
    std::optional<std::int64_t> padding; ///< stored; preference units
    /// The running program, if that is another process; 0: unknown which.
    std::optional<std::int32_t> runningProcess;

    /// Points between a screen's top line and the top of a window that counts as near it.
    static constexpr double topBand = 60;

    /// Asks the ports once; leaves `captures` absent. Captures nothing and presses nothing.
    /// Items of `runningProcess` count as the program's own.
    static Diagnosis take(const Platform& platform, GlobalPreferences& preferences,
                          std::optional<std::int32_t> runningProcess = std::nullopt);

    /// For people: one fact a line.
    [[nodiscard]] std::string text() const;
    /// For machines: one object, UTF-8, with the names of the fields.
    [[nodiscard]] std::string json() const;

    /// Why no icon at all is mirrored now; empty when nothing stands in the way.
    [[nodiscard]] std::string obstacle() const;

  private:
    void describeScreens(Screens& port);
    void listWindows(WindowList& list);
    void giveReasons();
};

} // namespace orrivane
