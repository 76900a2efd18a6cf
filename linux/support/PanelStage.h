#pragma once

#include <Orrivane/support/Geometry.h>
#include <Orrivane/support/Subscription.h>

#include <linux/support/PixelImage.h>
#include <linux/support/PixelRect.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace orrivane {

/// What the tray panel needs to know of the X server's window stack, without being a part of it.
class PanelStage {
  public:
    virtual ~PanelStage() = default;

    /// Root pixels a point.
    [[nodiscard]] virtual double scale() const = 0;
    /// A bottom-left-origin frame in points as root pixels, each edge rounded by itself.
    [[nodiscard]] virtual PixelRect pixels(const Rect& frame) const = 0;

    /// Tells which window is the panel; the server must know it already.
    virtual void adopt(std::uint32_t window) = 0;
    /// Moves and resizes the panel and puts it directly above the dock, never higher. Done on the
    /// server when it returns, or given up after a bounded time.
    virtual void place(const PixelRect& rect) = 0;

    /// Whether a window lies over the whole dock, as a full-screen one does: the panel is then to
    /// be unmapped.
    [[nodiscard]] virtual bool dockIsCovered() = 0;
    /// Whether a compositing manager blends windows; without one the panel paints its own backdrop.
    [[nodiscard]] virtual bool isComposited() = 0;
    /// What the dock itself shows in `rect`, without the panel and the icons under it; null when it
    /// cannot be read. May answer inside the call.
    virtual void backdrop(const PixelRect& rect,
                          std::function<void(std::shared_ptr<const PixelImage>)> completion) = 0;

    /// Called on the main thread when one of the answers above may have changed.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

} // namespace orrivane
