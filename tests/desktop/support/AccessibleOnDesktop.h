#pragma once

#include "AccessibleProgram.h"
#include "ProgramOnDesktop.h"

namespace orrivane::e2e {

/// The program on a notched desktop with everything in its main view open, as a screen reader reads
/// it.
class AccessibleOnDesktop : public ProgramOnDesktop {
  protected:
    using Control = AccessibleProgram::Control;

    /// Starts it with its own icon and clicks that.
    void startAndOpenPopover();
    /// Starts it without one and launches it again.
    void startAndOpenWindow();

    AccessibleTree& tree() { return reading_->tree(); }
    /// Every control that can be worked has the keyboard once in a round of Tab that begins where
    /// it is now, each below or to the right of the one before.
    void expectTabGoesInReadingOrder();

    std::optional<AccessibleProgram> reading_;

  private:
    using Layout = std::vector<std::pair<AccessibleNode, PixelRect>>;

    void startReading();
    Layout layoutAtRest();
    /// The controls in the order in which Tab comes to them, the first once more at the end.
    void tabThrough(const std::vector<AccessibleNode>& controls,
                    std::vector<AccessibleNode>& visited);
};

} // namespace orrivane::e2e
