#pragma once

#import <macos/appkit/AppKitStatusBar.h>

#include <memory>

namespace orrivane {

/// The body, with an eye on the buttons of its items.
class WatchedStatusBar : public StatusBar {
  public:
    std::unique_ptr<StatusItem> createItem(double length) override {
        auto item = body_.createItem(length);
        newest_ = dynamic_cast<AppKitStatusItem&>(*item).button();
        if (newest_ != nil)
            [buttons_ addObject:newest_];
        return item;
    }
    [[nodiscard]] int itemCount() const {
        int count = 0;
        @autoreleasepool {
            for (NSStatusBarButton* button in buttons_.allObjects)
                count += button.window.visible ? 1 : 0;
        }
        return count;
    }
    [[nodiscard]] NSStatusBarButton* _Nullable newest() const { return newest_; }

  private:
    AppKitStatusBar body_;
    NSHashTable<NSStatusBarButton*>* _Nonnull buttons_ = [NSHashTable weakObjectsHashTable];
    __weak NSStatusBarButton* _Nullable newest_ = nil;
};

} // namespace orrivane
