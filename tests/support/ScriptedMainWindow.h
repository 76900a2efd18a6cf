#pragma once

#include <Orrivane/platform/MainWindow.h>
#include <tests/support/CallJournal.h>

#include <utility>
#include <vector>

namespace orrivane {

/// A window with a title bar above its content and no other border.
class ScriptedMainWindow : public MainWindow {
  public:
    explicit ScriptedMainWindow(CallJournal calls = {})
        : journal(std::move(calls)) {}

    double chromeHeight = 28;   ///< points
    double naturalHeight = 640; ///< points, what the content asks for
    std::optional<Rect> screenVisibleFrame = Rect{{0, 0}, {1512, 945}};

    std::optional<MainWindowConfiguration> configuration; ///< absent before `create`
    std::optional<View> root;
    bool visible = false;
    Rect currentFrame;
    std::vector<Rect> animatedFrames; ///< every `setFrame`, in order
    CallJournal journal;

    /// The user closes the window.
    void close() { visible = false; }

    void create(const MainWindowConfiguration& windowConfiguration) override;
    void setRoot(const View& view) override;
    bool isVisible() override { return visible; }
    void makeKeyAndOrderFront() override;
    void setFrameTopLeft(Point topLeft) override;
    void center() override;
    Rect frame() override { return currentFrame; }
    Rect contentRect(const Rect& frame) override;
    Rect frameRect(const Rect& content) override;
    void setFrame(const Rect& frame) override;
    std::optional<Rect> visibleFrameOfScreen() override { return screenVisibleFrame; }
    double naturalContentHeight() override { return naturalHeight; }
};

} // namespace orrivane
