#pragma once

#include <Orrivane/support/Geometry.h>
#include <Orrivane/view/View.h>

#include <optional>
#include <string>

namespace orrivane {

/// How the window is made; sizes are content sizes in points.
struct MainWindowConfiguration {
    std::string title;
    Size contentSize;
    Size minimumContentSize;
};

/// The one resizable window. Closing hides it. Frames are bottom-left-origin points.
class MainWindow {
  public:
    virtual ~MainWindow() = default;

    /// Makes the window, hidden; called once, before everything below.
    virtual void create(const MainWindowConfiguration& configuration) = 0;
    virtual void setRoot(const View& root) = 0;
    [[nodiscard]] virtual bool isVisible() = 0;
    virtual void makeKeyAndOrderFront() = 0;
    virtual void setFrameTopLeft(Point topLeft) = 0;
    virtual void center() = 0;

    [[nodiscard]] virtual Rect frame() = 0;
    [[nodiscard]] virtual Rect contentRect(const Rect& frame) = 0;
    [[nodiscard]] virtual Rect frameRect(const Rect& content) = 0;
    /// Displays at once and animates.
    virtual void setFrame(const Rect& frame) = 0;
    /// The visible frame of the window's screen, else of the main screen; absent without screens.
    [[nodiscard]] virtual std::optional<Rect> visibleFrameOfScreen() = 0;
    /// The height that the content would have at its present width.
    [[nodiscard]] virtual double naturalContentHeight() = 0;
};

} // namespace orrivane
