#pragma once

#include <Orrivane/StripItem.h>
#include <Orrivane/WindowCensus.h>

#include <span>
#include <vector>

namespace orrivane {

class Screens;
class TrayPanel;

/// The tray left of the notch. It keeps nothing but whether it was last shown: every tick replaces
/// its row and its frame. Main thread only; nothing fails.
class StripWindow {
  public:
    /// Configures the panel; it is not shown yet. Both ports outlive the window.
    StripWindow(TrayPanel& panel, Screens& screens);
    StripWindow(const StripWindow&) = delete;
    StripWindow& operator=(const StripWindow&) = delete;

    /// Shows the row, left to right, beside the notch; also replaces one that shows.
    void show(std::vector<StripItem> items, const NotchInfo& notch);
    /// Takes the row away; the panel keeps what it last showed.
    void hide();
    [[nodiscard]] bool isVisible() const { return visible_; }
    /// Bottom-left-origin points; the zero rectangle while hidden.
    [[nodiscard]] Rect frame() const { return visible_ ? frame_ : Rect{}; }

    /// Where a row of these widths stands: its right edge `notchMargin` left of the notch, at the
    /// top of the first screen with a top inset, else of the first screen, else at y 0.
    static Rect frame(std::span<const double> widths, const NotchInfo& notch,
                      std::span<const ScreenDescription> screens);

    static constexpr double notchMargin = 6; ///< points

  private:
    TrayPanel& panel_;
    Screens& screens_;
    Rect frame_;
    bool visible_ = false;
};

} // namespace orrivane
