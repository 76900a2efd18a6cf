#pragma once

#include <Orrivane/platform/ApplicationDelegate.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ShellPlatform.h>
#include <Orrivane/support/Geometry.h>
#include <Orrivane/support/NotificationCenter.h>

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace orrivane {

class CaptureService;
class StatusItem;
class StripController;
class UpdateController;
struct View;

/// Starts the application and holds its status item, popover and window. Main thread only.
class AppDelegate : public ApplicationDelegate {
  public:
    /// Makes a main view for the window or for the popover. Before it returns it hands `setRoot`
    /// the first value, and then another one whenever what is shown has changed. What comes back
    /// keeps the view alive.
    using MainViewFactory = std::function<std::shared_ptr<void>(
        bool inWindow, std::function<void(const View&)> setRoot)>;

    struct Services {
        CaptureService& captures;
        StripController& strip;
        UpdateController& updates;
        NotificationCenter& notifications;
    };

    /// Does nothing yet. Ports and services outlive the delegate.
    AppDelegate(const Platform& platform, const ShellPlatform& shell, const Services& services,
                MainViewFactory makeMainView);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;
    ~AppDelegate() override;

    void applicationDidFinishLaunching() override;
    /// Brings the window forward, whether one is visible or not.
    bool applicationShouldHandleReopen(bool hasVisibleWindows) override;

    /// What a click on the own status item does.
    void togglePopover();
    /// Creates or removes the own status item as its stored switch says.
    void updateStatusItemVisibility();
    /// Shows on the own status item whether there is an update.
    void refreshUpdateBadge();
    /// Makes the window as high as content of `height` points needs.
    void fitWindow(double height);

    /// The window's frame after its content was asked to be `requested` points high: the top edge
    /// and the width stay, the height follows as far as the screen allows. `frame` is in global
    /// points, y up; `contentHeight` is the present height of the content and `chromeHeight` what
    /// the title bar adds to it; `visibleHeight` is that of the screen's visible frame, absent when
    /// there is no screen. Absent when nothing changes: the content is within 4 points of its
    /// target, or the target is not a finite height.
    static std::optional<Rect> fittedFrame(const Rect& frame, double contentHeight,
                                           double chromeHeight, std::optional<double> visibleHeight,
                                           double requested);

    /// User default: whether the own status item is shown.
    static constexpr std::string_view showStatusItemKey = "OrrivaneShowStatusItem";
    static constexpr Size popoverSize{980, 640};       ///< points
    static constexpr Size windowSize{980, 620};        ///< points, of the content
    static constexpr Size minimumWindowSize{560, 400}; ///< points, of the content

  private:
    void createPopover();
    void createWindow();
    void placeWindow();
    void showWindow();
    using Reaction = void (*)(AppDelegate& delegate, const UserInfo& userInfo);
    /// `reaction` while the delegate exists, then `always`; for as long as the centre lives.
    void observe(std::string_view name, Reaction reaction, std::function<void()> always = {});

    Platform platform_;
    ShellPlatform shell_;
    Services services_;
    MainViewFactory makeMainView_;

    std::unique_ptr<StatusItem> statusItem_;
    Popover* popover_ = nullptr; // null until launched, as the window
    MainWindow* window_ = nullptr;
    std::shared_ptr<void> popoverView_;
    std::shared_ptr<void> windowView_;

    // Last, so that weak references die before anything they could reach.
    std::shared_ptr<AppDelegate*> self_;
};

} // namespace orrivane
