#pragma once

#include <string_view>

namespace orrivane {

/// What the parts of the program tell each other over the default notification centre.
struct NotificationName {
    /// Show the main window, in place of the popover.
    static constexpr std::string_view orrivaneShowWindow = "OrrivaneShowWindow";
    /// The stored switch of the own status item changed.
    static constexpr std::string_view orrivaneStatusItemChanged = "OrrivaneStatusItemChanged";
    /// The content of the main window has another natural height: `heightKey`, in points.
    static constexpr std::string_view orrivaneContentHeight = "OrrivaneContentHeight";
    /// The `availableVersion` of the update controller, which is the object, changed.
    static constexpr std::string_view updateAvailabilityChanged =
        "QuenmarUpdateAvailabilityChanged";

    static constexpr std::string_view heightKey = "height";
};

} // namespace orrivane
