#pragma once

#include <Orrivane/WindowCensus.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {

/// An entry with the process that made the window, as far as the window server says.
struct OwnedWindow {
    WindowListEntry window;
    std::optional<std::int32_t> process;
    std::optional<std::string> owner; ///< what the process is called

    friend bool operator==(const OwnedWindow&, const OwnedWindow&) = default;
};

/// The window server's two lists. Status items, and nothing else, have layer 25. A list that
/// cannot be read is empty; entries may be malformed and are judged by the census.
class WindowList {
  public:
    virtual ~WindowList() = default;

    /// All windows but desktop elements, in the server's order.
    [[nodiscard]] virtual std::vector<WindowListEntry> allWindows() = 0;
    /// The windows that are on screen now.
    [[nodiscard]] virtual std::vector<WindowListEntry> onscreenWindows() = 0;
    /// `allWindows` with their owners. For diagnosing: it costs more, and a census needs none.
    [[nodiscard]] virtual std::vector<OwnedWindow> ownedWindows() { return {}; }
};

} // namespace orrivane
