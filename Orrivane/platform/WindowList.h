#pragma once

#include <Orrivane/WindowCensus.h>

#include <vector>

namespace orrivane {

/// The window server's two lists. Status items, and nothing else, have layer 25. A list that
/// cannot be read is empty; entries may be malformed and are judged by the census.
class WindowList {
  public:
    virtual ~WindowList() = default;

    /// All windows but desktop elements, in the server's order.
    [[nodiscard]] virtual std::vector<WindowListEntry> allWindows() = 0;
    /// The windows that are on screen now.
    [[nodiscard]] virtual std::vector<WindowListEntry> onscreenWindows() = 0;
};

} // namespace orrivane
