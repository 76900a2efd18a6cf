#pragma once

#include <Orrivane/platform/Screens.h>

#include <linux/x11/Connection.h>
#include <linux/x11/CutoutFile.h>
#include <linux/x11/Space.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orrivane::x11 {

/// One monitor, in root pixels.
struct Monitor {
    PixelRect rect;
    std::optional<Rect> cutout; ///< absent where there is none or its width is not known
    double inset = 0;           ///< rows beside the camera housing; 0 without one

    friend bool operator==(const Monitor&, const Monitor&) = default;
};

/// Screens from the server's monitors and the display cutouts. What was read is kept until an event
/// says that it changed.
class X11Screens : public Screens {
  public:
    /// `scale` is root pixels a point.
    X11Screens(Connection& connection, double scale, CutoutFile userCutout, std::string deviceTree);

    std::vector<ScreenDescription> screens() override;
    std::optional<ScreenDescription> mainScreen() override;
    Rect visibleFrame(const ScreenDescription& screen) override;
    bool mainDisplayIsAsleep() override;

    /// The primary one first; empty when the server did not answer. These take in no events, so
    /// that what the caller has looked up in the tree stays valid.
    const std::vector<Monitor>& monitors();
    Space space();
    /// Root pixels a point.
    [[nodiscard]] double scale() const { return scale_; }
    /// The bar's band beside a cutout that reaches into `pixels`, in root pixels; absent where
    /// there is none.
    std::optional<Rect> cutoutBand(const PixelRect& pixels);
    /// Whether some monitor has a camera housing of which only the height is known.
    bool knowsOnlyTheInset();

    /// The window that has the focus, for `mainScreen`; set by whoever follows it.
    void setActiveWindow(std::function<std::uint32_t()> activeWindow) {
        activeWindow_ = std::move(activeWindow);
    }
    /// Called at every event that changes what this port answers, before it is read anew.
    Subscription onChange(std::function<void()> changed) {
        return changes_.add(std::move(changed));
    }
    /// Called with whether the screens were just blanked.
    Subscription onBlank(std::function<void(bool)> blanked) {
        return blanks_.add(std::move(blanked));
    }

  private:
    void handle(const xcb_generic_event_t& event);
    void listen();
    void readMonitors();
    [[nodiscard]] std::vector<Rect> readCutouts(xcb_get_property_cookie_t cookie, Deadline until);
    void layCutouts(const std::vector<Rect>& cutouts);
    [[nodiscard]] ScreenDescription describe(const Monitor& monitor);

    Connection& connection_;
    double scale_;
    CutoutFile userCutout_;
    std::string deviceTree_;
    std::function<std::uint32_t()> activeWindow_;
    std::vector<Monitor> monitors_;
    bool known_ = false;
    bool saverActive_ = false;
    bool hasDpms_ = false;
    std::uint8_t randrEvent_ = 0;
    std::uint8_t saverEvent_ = 0;
    ObserverList<> changes_;
    ObserverList<bool> blanks_;
    Subscription events_;
};

} // namespace orrivane::x11
