#include <Orrivane/AppDelegate.h>

#include <Orrivane/CaptureService.h>
#include <Orrivane/MenuBarIcon.h>
#include <Orrivane/NotificationName.h>
#include <Orrivane/StripController.h>
#include <Orrivane/UpdateController.h>
#include <Orrivane/platform/MainWindow.h>
#include <Orrivane/platform/Popover.h>
#include <Orrivane/platform/Screens.h>
#include <Orrivane/platform/StatusBar.h>
#include <Orrivane/platform/UserDefaults.h>
#include <Orrivane/platform/Workspace.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orrivane {

namespace {

// Points.
constexpr double screenMargin = 24;         // left free by a window that is as high as may be
constexpr double heightWithoutScreen = 776; // that height where no screen says one
// Smaller differences are left alone, so that the window does not tremble after every layout.
constexpr double tolerance = 4;

constexpr double belowScreenTop = 8;  // points between the visible frame's top and the window's
constexpr double variableLength = -1; // as wide as the status item's content
constexpr int imageLeading = 7;       // the title after the image
constexpr const char* badge = " ●";   // beside the icon

} // namespace

AppDelegate::AppDelegate(const Platform& platform, const ShellPlatform& shell,
                         const Services& services, MainViewFactory makeMainView)
    : platform_(platform)
    , shell_(shell)
    , services_(services)
    , makeMainView_(std::move(makeMainView))
    , self_(std::make_shared<AppDelegate*>(this)) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    platform_.workspace.setActivationPolicy(ActivationPolicy::accessory);
    platform_.userDefaults.registerDefault(showStatusItemKey, true);
    createPopover();
    updateStatusItemVisibility();
    observe(NotificationName::orrivaneStatusItemChanged,
            [](auto& delegate, const auto&) { delegate.updateStatusItemVisibility(); });
    createWindow();
    if (!services_.captures.screenCaptureGranted() || !services_.captures.accessibilityTrusted())
        showWindow();
    services_.strip.start();
    services_.updates.start();
    observe(NotificationName::updateAvailabilityChanged,
            [](auto& delegate, const auto&) { delegate.refreshUpdateBadge(); });
    observe(NotificationName::orrivaneContentHeight, [](auto& delegate, const auto& userInfo) {
        const auto height = userInfo.find(NotificationName::heightKey);
        if (height != userInfo.end())
            delegate.fitWindow(height->second);
    });
    observe(
        NotificationName::orrivaneShowWindow,
        [](auto& delegate, const auto&) {
            if (delegate.popover_)
                delegate.popover_->performClose();
            if (delegate.window_)
                delegate.window_->makeKeyAndOrderFront();
        },
        [&workspace = platform_.workspace] { workspace.activate(); });
}

void AppDelegate::observe(std::string_view name, Reaction reaction, std::function<void()> always) {
    // The registration belongs to its own callback, so that it ends with the centre and not before.
    const auto registration = std::make_shared<Subscription>();
    *registration = services_.notifications.addObserver(
        name, [registration, reaction, always = std::move(always),
               weak = std::weak_ptr(self_)](const UserInfo& userInfo) {
            if (const auto delegate = weak.lock())
                reaction(**delegate, userInfo);
            if (always)
                always();
        });
}

bool AppDelegate::applicationShouldHandleReopen(bool /*hasVisibleWindows*/) {
    showWindow();
    return true;
}

void AppDelegate::createPopover() {
    auto& popover = shell_.popover;
    popoverView_ = makeMainView_(false, [&popover](const View& root) { popover.setRoot(root); });
    // A popover takes on its content's size with its content, so the size comes after it.
    popover.setContentSize(popoverSize);
    popover_ = &popover;
}

void AppDelegate::createWindow() {
    auto& window = shell_.mainWindow;
    window.create({"Orrivane", windowSize, minimumWindowSize});
    windowView_ = makeMainView_(true, [&window](const View& root) { window.setRoot(root); });
    placeWindow();
    window_ = &window;
}

void AppDelegate::placeWindow() {
    const auto screen = platform_.screens.mainScreen();
    if (!screen) {
        shell_.mainWindow.center();
        return;
    }
    const Rect visible = platform_.screens.visibleFrame(*screen);
    shell_.mainWindow.setFrameTopLeft(
        {visible.midX() - windowSize.width / 2, visible.maxY() - belowScreenTop});
}

void AppDelegate::showWindow() {
    if (window_)
        window_->makeKeyAndOrderFront();
    platform_.workspace.activate();
}

void AppDelegate::updateStatusItemVisibility() {
    if (!platform_.userDefaults.boolForKey(showStatusItemKey)) {
        statusItem_.reset();
        return;
    }
    if (statusItem_)
        return;
    auto item = shell_.statusBar.createItem(variableLength);
    if (item->hasButton()) {
        item->setImage(MenuBarIcon::image());
        item->setAction([weak = std::weak_ptr(self_)] {
            if (const auto delegate = weak.lock())
                (*delegate)->togglePopover();
        });
    }
    statusItem_ = std::move(item);
    refreshUpdateBadge();
}

void AppDelegate::togglePopover() {
    if (!popover_ || !statusItem_ || !statusItem_->hasButton())
        return;
    if (popover_->isShown())
        popover_->performClose();
    else
        popover_->show(*statusItem_);
}

void AppDelegate::refreshUpdateBadge() {
    if (!statusItem_ || !statusItem_->hasButton())
        return;
    statusItem_->setImagePosition(imageLeading);
    if (const auto& version = services_.updates.availableVersion()) {
        statusItem_->setTitle(badge);
        statusItem_->setToolTip("Orrivane " + *version + " is available");
    } else {
        statusItem_->setTitle("");
        statusItem_->setToolTip(std::nullopt);
    }
}

void AppDelegate::fitWindow(double height) {
    if (!window_)
        return;
    const Rect frame = window_->frame();
    const Rect content = window_->contentRect(frame);
    const double chrome = window_->frameRect({{}, content.size}).height() - content.height();
    const auto visible = window_->visibleFrameOfScreen();
    const auto visibleHeight = visible ? std::optional(visible->height()) : std::nullopt;
    if (const auto fitted = fittedFrame(frame, content.height(), chrome, visibleHeight, height))
        window_->setFrame(*fitted);
}

std::optional<Rect> AppDelegate::fittedFrame(const Rect& frame, double contentHeight,
                                             double chromeHeight,
                                             std::optional<double> visibleHeight,
                                             double requested) {
    const double tallest = visibleHeight ? *visibleHeight - screenMargin : heightWithoutScreen;
    const double target = std::min(requested, tallest);
    // A measurement that went wrong must not reach the window.
    if (!std::isfinite(target) || std::abs(contentHeight - target) <= tolerance)
        return std::nullopt;
    const double height = target + chromeHeight;
    return Rect{{frame.minX(), frame.maxY() - height}, {frame.width(), height}};
}

} // namespace orrivane
