#pragma once

#include <Orrivane/platform/StatusBar.h>

#import <AppKit/AppKit.h>

@class ORVStatusItemTarget;

namespace orrivane {

/// One item of the system's status bar, taken out of it with this object.
class AppKitStatusItem : public StatusItem {
  public:
    /// Points; NSVariableStatusItemLength for as wide as the content.
    explicit AppKitStatusItem(CGFloat length);
    AppKitStatusItem(const AppKitStatusItem&) = delete;
    AppKitStatusItem& operator=(const AppKitStatusItem&) = delete;
    ~AppKitStatusItem() override;

    [[nodiscard]] bool hasButton() const override { return button() != nil; }
    void setImage(const Drawing& image) override;
    void setAction(std::function<void()> action) override;
    void setImagePosition(int position) override;
    void setTitle(const std::string& title) override;
    void setToolTip(const std::optional<std::string>& toolTip) override;

    [[nodiscard]] NSStatusBarButton* _Nullable button() const { return item_.button; }

  private:
    NSStatusItem* _Nonnull item_;
    ORVStatusItemTarget* _Nonnull target_; // the button does not keep it
};

class AppKitStatusBar : public StatusBar {
  public:
    [[nodiscard]] std::unique_ptr<StatusItem> createItem(double length) override;
};

} // namespace orrivane
