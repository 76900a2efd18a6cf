#pragma once

#include <Orrivane/support/Task.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace orrivane {

class ScreenCapture;

/// What became of one picture that was taken only to see whether it can be.
struct CaptureProbe {
    struct Picture {
        int width = 0;               ///< pixels
        int height = 0;              ///< pixels
        std::optional<bool> isClear; ///< nothing is to be seen on it; absent: not known

        friend bool operator==(const Picture&, const Picture&) = default;
    };

    std::uint32_t window = 0;
    bool isInSnapshot = false;
    std::optional<Picture> picture; ///< absent: the system gave none in time

    friend bool operator==(const CaptureProbe&, const CaptureProbe&) = default;
};

/// The pictures of all items, one after the other.
struct CaptureProbes {
    std::optional<std::size_t> snapshotSize; ///< windows in it; absent: none came
    std::vector<CaptureProbe> windows;

    friend bool operator==(const CaptureProbes&, const CaptureProbes&) = default;

    /// As the tray captures them. Only with the permission: without it the system may prompt.
    static Task<CaptureProbes> take(ScreenCapture& capture, std::vector<std::uint32_t> windows);
};

} // namespace orrivane
