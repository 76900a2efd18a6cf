#pragma once

#include <Orrivane/platform/Popover.h>

#import <AppKit/AppKit.h>

@class ORVPopoverController;

namespace orrivane {

/// A transient popover at the own status item. Nothing is shown while the notch or a full bar hides
/// the item.
class AppKitPopover : public Popover {
  public:
    AppKitPopover();
    AppKitPopover(const AppKitPopover&) = delete;
    AppKitPopover& operator=(const AppKitPopover&) = delete;
    ~AppKitPopover() override;

    void setRoot(const View& root) override;
    void setContentSize(Size size) override;
    [[nodiscard]] bool isShown() override;
    void show(StatusItem& below) override;
    void performClose() override;

  private:
    void takeSize(NSSize size);

    NSSize size_ = NSZeroSize; // wanted; on a low screen it is less
    NSPopover* _Nonnull popover_;
    ORVPopoverController* _Nonnull controller_; // the popover does not keep its delegate
};

} // namespace orrivane
