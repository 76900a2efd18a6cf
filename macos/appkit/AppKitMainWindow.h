#pragma once

#include <Orrivane/platform/MainWindow.h>

#import <AppKit/AppKit.h>

@class ORVMainWindowDelegate;
@class ORVScreenView;

/// The class by which the window that hosts the main view is known among the program's windows.
@interface ORVMainWindow : NSWindow
@end

namespace orrivane {

class AppKitMainWindow : public MainWindow {
  public:
    AppKitMainWindow() = default;
    AppKitMainWindow(const AppKitMainWindow&) = delete;
    AppKitMainWindow& operator=(const AppKitMainWindow&) = delete;
    ~AppKitMainWindow() override;

    void create(const MainWindowConfiguration& configuration) override;
    void setRoot(const View& root) override;
    [[nodiscard]] bool isVisible() override;
    void makeKeyAndOrderFront() override;
    void setFrameTopLeft(Point topLeft) override;
    void center() override;
    [[nodiscard]] Rect frame() override;
    [[nodiscard]] Rect contentRect(const Rect& frame) override;
    [[nodiscard]] Rect frameRect(const Rect& content) override;
    /// Returns when the animation has ended.
    void setFrame(const Rect& frame) override;
    [[nodiscard]] std::optional<Rect> visibleFrameOfScreen() override;
    [[nodiscard]] double naturalContentHeight() override;

  private:
    ORVMainWindow* _Nullable window_ = nil;
    ORVMainWindowDelegate* _Nullable delegate_ = nil; // the window does not keep it
    ORVScreenView* _Nullable screen_ = nil;
};

} // namespace orrivane
