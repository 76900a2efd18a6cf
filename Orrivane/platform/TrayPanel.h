#pragma once

#include <Orrivane/support/Geometry.h>
#include <Orrivane/view/View.h>

#include <cstdint>

namespace orrivane {

/// How a panel is made. The numbers are the window server's own.
struct TrayPanelConfiguration {
    std::uint32_t styleMask = 0;
    bool deferred = false;
    bool floating = false;
    bool becomesKeyOnlyIfNeeded = false;
    int level = 0;
    std::uint32_t collectionBehavior = 0;
    bool opaque = true;
    bool hasShadow = true;
    bool movable = true;
    bool hidesOnDeactivate = true;
    bool clearBackground = false;

    friend bool operator==(const TrayPanelConfiguration&, const TrayPanelConfiguration&) = default;
};

/// The one panel of the tray. Never becomes active or takes the keyboard. Main thread only.
class TrayPanel {
  public:
    virtual ~TrayPanel() = default;

    static constexpr int statusWindowLevelKey = 9; ///< kCGStatusWindowLevelKey

    /// The level that the window server gives a level key.
    [[nodiscard]] virtual int windowLevelForKey(int key) = 0;
    /// Makes the panel, hidden and of zero size; called once, before everything below.
    virtual void create(const TrayPanelConfiguration& configuration) = 0;
    /// Replaces what the panel shows. The content never resizes the panel.
    virtual void setRoot(const View& root) = 0;
    /// Bottom-left-origin points; what is shown is redrawn at once.
    virtual void setFrame(const Rect& frame) = 0;
    /// Shows the panel in front of what has its level, whether the program is active or not.
    virtual void orderFrontRegardless() = 0;
    virtual void orderOut() = 0;
};

} // namespace orrivane
