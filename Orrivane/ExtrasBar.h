#pragma once

#include <Orrivane/support/Geometry.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {

class Accessibility;
class MainLoop;

/// What one application answers when it is asked for its status items.
struct ExtrasBar {
    struct Child {
        std::string role;          ///< empty: none was given
        std::optional<Rect> frame; ///< global points, top-left origin, y down

        friend bool operator==(const Child&, const Child&) = default;
    };

    std::string application;
    std::int32_t process = 0;
    bool answered = false; ///< it answered something, be it that it has no such bar
    bool isThere = false;
    double milliseconds = 0;     ///< that all questions to it took
    std::size_t childCount = 0;  ///< `children` has fewer when time ran out
    std::vector<Child> children; ///< in child order

    friend bool operator==(const ExtrasBar&, const ExtrasBar&) = default;

    /// One for each running application, in the system's order. Main thread only; an application
    /// that does not answer costs two messaging timeouts, one that answers slowly little more than
    /// `patience`.
    static std::vector<ExtrasBar> readAll(Accessibility& accessibility, const MainLoop& clock);

    static constexpr std::size_t mostApplications = 200;
    static constexpr double patience = 1.0; ///< seconds
};

} // namespace orrivane
