#pragma once

#include <Orrivane/support/Geometry.h>
#include <Orrivane/view/View.h>

namespace orrivane {

class StatusItem;

/// A frameless window under the own status item that closes when the user clicks elsewhere.
class Popover {
  public:
    virtual ~Popover() = default;

    virtual void setRoot(const View& root) = 0;
    /// Points; takes effect only after the root was set.
    virtual void setContentSize(Size size) = 0;
    [[nodiscard]] virtual bool isShown() = 0;
    /// Below the item's button; its window takes the keyboard, the program does not become active.
    virtual void show(StatusItem& below) = 0;
    virtual void performClose() = 0;
};

} // namespace orrivane
