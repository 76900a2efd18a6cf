#pragma once

#include "NotchedDesktop.h"

#include <optional>
#include <string>
#include <vector>

namespace orrivane::demo {

/// What a second connection to the display sees of the desktop: it asks the server alone, never the
/// program. All places are root pixels.
class Witness {
  public:
    /// `desktop` and `program` outlive it.
    Witness(e2e::NotchedDesktop& desktop, e2e::ChildProcess& program)
        : desktop_(desktop)
        , program_(program) {}

    /// Icons that the notch overlaps, left to right.
    std::vector<e2e::WindowState> hidden();
    /// The program's window in the bar, 6 points left of the notch.
    std::optional<e2e::WindowState> strip();
    /// The hidden icons that the strip mirrors, told by its width; absent when that is not the sum
    /// of a run of them that ends at the notch.
    std::optional<std::vector<e2e::WindowState>> mirrored();
    /// Where in the strip the last of these icons is mirrored.
    e2e::PixelRect lastCell(const std::vector<e2e::WindowState>& icons);
    /// The menu of the application that `icon` belongs to, once it is open.
    std::optional<e2e::WindowState> menuOf(const e2e::WindowState& icon);
    /// Whether `window` stands above the strip, also because there is none.
    bool isAboveStrip(xcb_window_t window);

  private:
    e2e::NotchedDesktop& desktop_;
    e2e::ChildProcess& program_;
};

/// "a, b and c"; "nothing" for an empty list.
std::string listed(const std::vector<e2e::WindowState>& icons);

} // namespace orrivane::demo
