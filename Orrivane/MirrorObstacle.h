#pragma once

#include <cstddef>
#include <optional>

namespace orrivane {

/// What keeps the tray away, whatever the notch hides.
enum class MirrorObstacle {
    switchedOff,
    noScreen,
    displayAsleep,
    otherScreen, ///< more than one is attached, and the user wants no tray meanwhile
    mayNotCapture,
    mayNotPress,
};

/// The first obstacle in the order in which a tick asks; absent: none. `answers` has `enabled()`,
/// `screenCount()`, `displayIsAsleep()`, `mirrorsOnExternal()`, `mayCapture()` and `mayPress()`,
/// and is asked no further than the first obstacle: each answer costs a call to the system.
template <class Answers>
[[nodiscard]] std::optional<MirrorObstacle> firstObstacle(const Answers& answers) {
    if (!answers.enabled())
        return MirrorObstacle::switchedOff;
    const std::size_t screens = answers.screenCount();
    if (screens == 0)
        return MirrorObstacle::noScreen;
    if (answers.displayIsAsleep())
        return MirrorObstacle::displayAsleep;
    if (screens > 1 && !answers.mirrorsOnExternal())
        return MirrorObstacle::otherScreen;
    if (!answers.mayCapture())
        return MirrorObstacle::mayNotCapture;
    if (!answers.mayPress())
        return MirrorObstacle::mayNotPress;
    return std::nullopt;
}

} // namespace orrivane
