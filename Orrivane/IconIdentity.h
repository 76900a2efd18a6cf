#pragma once

#include <Orrivane/WindowCensus.h>
#include <Orrivane/platform/AccessibilityElement.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orrivane {

class Accessibility;
class SystemLog;

/// One status item as its application's accessibility tree shows it.
struct IconOwner {
    AccessibilityElement element; ///< a child of the application's extras menu bar
    std::string appName;          ///< localized name, else bundle identifier, else "App"
    std::int32_t pid = 0;
    Rect frame; ///< global points, top-left origin, y down

    friend bool operator==(const IconOwner&, const IconOwner&) = default;
};

/// Pairs census windows with accessibility elements, presses them, and measures menus. Stateless
/// and synchronous; main thread only. Without the accessibility permission every read is absent.
struct IconIdentity {
    // On the installed platform.
    static std::vector<IconOwner> resolveOwners();
    static bool press(const IconOwner& owner);
    static bool hasOpenMenu(const IconOwner& owner);
    static std::optional<double> frontmostMenuWidth();

    /// Every status item of every running application, in system and child order. The costly
    /// walk: up to 0.3 s for an application that does not answer.
    static std::vector<IconOwner> resolveOwners(Accessibility& accessibility);
    /// True when the press was accepted; a refusal is logged and not retried.
    static bool press(const IconOwner& owner, Accessibility& accessibility, SystemLog& log);
    /// The right button's action, for platforms whose status items have one; as `press`.
    static bool showMenu(const IconOwner& owner, Accessibility& accessibility, SystemLog& log);
    /// Whether a menu hangs on the item now; false when it does not answer.
    static bool hasOpenMenu(const IconOwner& owner, Accessibility& accessibility);
    /// Points from the left end of the menu bar to the right end of the frontmost application's
    /// last menu; absent when unknown.
    static std::optional<double> frontmostMenuWidth(Accessibility& accessibility);

    /// The right edge of the menu bar that `rect` (top-left origin) lies in, global points.
    static double barRightEdge(const Rect& rect, std::span<const ScreenDescription> screens);
    /// The owner whose distance from its bar's right end is nearest to the window's, if within 20
    /// points: absolute x may differ between the two sources.
    static std::optional<IconOwner> owner(const StatusItemWindow& window,
                                          std::span<const IconOwner> owners,
                                          std::span<const ScreenDescription> screens);
    /// Points from the bar's left edge to the right end of the rightmost menu in `children`, all of
    /// them in one coordinate system. What is absent could not be read: without the bar's
    /// rectangle it begins with the leftmost menu, and without any menu's the result is absent.
    static std::optional<double> menuWidth(const std::optional<Rect>& bar,
                                           std::span<const std::optional<Rect>> children);
};

} // namespace orrivane
