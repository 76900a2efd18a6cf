#pragma once

#include <Orrivane/platform/MainWindow.h>

#include <QWidget>

#include <memory>

namespace orrivane {

class ScreenView;

/// The program's one window. It keeps out of task bars, and closing only hides it.
class QtMainWindow : public MainWindow {
  public:
    QtMainWindow();
    ~QtMainWindow() override;

    void create(const MainWindowConfiguration& configuration) override;
    void setRoot(const View& root) override;
    [[nodiscard]] bool isVisible() override;
    void makeKeyAndOrderFront() override;
    void setFrameTopLeft(Point topLeft) override;
    void center() override;
    [[nodiscard]] Rect frame() override;
    [[nodiscard]] Rect contentRect(const Rect& frame) override;
    [[nodiscard]] Rect frameRect(const Rect& content) override;
    void setFrame(const Rect& frame) override;
    [[nodiscard]] std::optional<Rect> visibleFrameOfScreen() override;
    [[nodiscard]] double naturalContentHeight() override;

    /// Asks the window manager for the keyboard, if the window can be seen.
    void activate();
    void setIcon(const QIcon& icon);
    /// Null before create.
    [[nodiscard]] QWidget* widget() const;

  private:
    class Window;

    void keepOutOfTaskBars();
    void resizeContent(const QSize& size);

    std::unique_ptr<Window> window_;
};

} // namespace orrivane
