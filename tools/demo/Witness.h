#pragma once

#include "Desktop.h"

#include <optional>
#include <string>
#include <vector>

namespace orrivane::demo {

/// A status icon as the server places it, and the application it belongs to.
struct Icon {
    const e2e::DockedClient* owner = nullptr;
    e2e::WindowState window;
};

/// What a second connection to the display sees of a desktop: it asks the server alone, never the
/// program. All places are root pixels.
class Witness {
  public:
    /// `desktop` must outlive it.
    Witness(e2e::Desktop& desktop, const e2e::PixelRect& notch)
        : desktop_(desktop)
        , notch_(notch) {}

    const e2e::PixelRect& notch() const { return notch_; }
    /// The applications' icons, left to right.
    std::vector<Icon> tray();
    /// Those of them that the notch overlaps.
    std::vector<Icon> hidden();
    /// Whose icons the strip shows, told by comparing its pixels with those of every icon; "an
    /// unknown picture" where none is the same. Absent without a strip.
    std::optional<std::vector<std::string>> stripNames();
    /// Where a strip that mirrors these icons has to stand.
    e2e::PixelRect stripPlace(const std::vector<Icon>& icons) const;
    /// The part of the strip that mirrors `owner`; absent when it mirrors none of its icons.
    std::optional<e2e::PixelRect> cellOf(const e2e::DockedClient& owner);
    /// Everything about the strip is as it has to be; else a sentence that says what it shows.
    std::optional<std::string> complaint();
    bool isAboveStrip(xcb_window_t menu);

  private:
    bool looksLike(const e2e::WindowState& icon, int x);

    e2e::Desktop& desktop_;
    e2e::PixelRect notch_;
};

/// "a, b and c"; "nothing" for an empty list.
std::string listed(const std::vector<std::string>& names);
std::string listed(const std::vector<Icon>& icons);

} // namespace orrivane::demo
