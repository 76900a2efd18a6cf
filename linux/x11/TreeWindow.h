#pragma once

#include <linux/support/PixelRect.h>

#include <cstdint>
#include <vector>

namespace orrivane::x11 {

/// What a window is to the tray, judged from its place in the tree.
enum class WindowRole {
    root,
    managed,  ///< the window manager's own: a frame around somebody's window
    dockPart, ///< a dock, the tray, or something inside them
    icon,     ///< docked by another client than the tray's
    other,    ///< of no interest below; read once, not listened to
};

enum class WindowType { none, dock, tooltip };

/// One window as the mirror knows it.
struct TreeWindow {
    std::uint32_t id = 0;
    std::uint32_t parent = 0; ///< 0 for the root
    WindowRole role = WindowRole::other;
    PixelRect geometry; ///< inside the parent, border left out
    int border = 0;
    bool mapped = false;
    bool inputOnly = false;
    bool hasXembedInfo = false;
    WindowType type = WindowType::none;
    bool isShaped = false;
    PixelRect bounding; ///< extents of the bounding shape inside the window; children of the root
    std::vector<std::uint32_t> children; ///< bottom to top
    std::uint32_t listedBy = 0; ///< the request that `children` were read by; 0 before that
    /// Told apart from an earlier window of the same id, which the server may give out again.
    std::uint64_t serial = 0;
};

} // namespace orrivane::x11
