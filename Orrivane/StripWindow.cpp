#include <Orrivane/StripWindow.h>

#include <Orrivane/StripView.h>
#include <Orrivane/platform/Screens.h>
#include <Orrivane/platform/TrayPanel.h>

#include <numeric>

namespace orrivane {

namespace {

// Numbers of the window server and its toolkit.
constexpr std::uint32_t nonactivatingPanel = 128; // NSWindowStyleMaskNonactivatingPanel
// NSWindowCollectionBehavior: CanJoinAllSpaces, Stationary, IgnoresCycle, FullScreenAuxiliary.
constexpr std::uint32_t collectionBehavior = 0x151;
constexpr double initialBarHeight = 32; // points

const ScreenDescription* screenOfTray(std::span<const ScreenDescription> screens) {
    if (const auto* notched = WindowCensus::notchedScreen(screens))
        return notched;
    return screens.empty() ? nullptr : &screens.front();
}

} // namespace

StripWindow::StripWindow(TrayPanel& panel, Screens& screens)
    : panel_(panel)
    , screens_(screens) {
    TrayPanelConfiguration configuration;
    configuration.styleMask = nonactivatingPanel;
    configuration.deferred = true;
    configuration.floating = true;
    configuration.becomesKeyOnlyIfNeeded = true;
    configuration.level = panel.windowLevelForKey(TrayPanel::statusWindowLevelKey) + 1;
    configuration.collectionBehavior = collectionBehavior;
    configuration.clearBackground = true;
    configuration.opaque = false;
    configuration.hasShadow = false;
    configuration.movable = false;
    configuration.hidesOnDeactivate = false;
    panel_.create(configuration);
    panel_.setRoot(StripView{{}, initialBarHeight}.body());
}

void StripWindow::show(std::vector<StripItem> items, const NotchInfo& notch) {
    std::vector<double> widths;
    widths.reserve(items.size());
    for (const auto& item : items)
        widths.push_back(item.width);
    panel_.setRoot(StripView{std::move(items), notch.menuBarHeight}.body());
    frame_ = frame(widths, notch, screens_.screens());
    panel_.setFrame(frame_);
    panel_.orderFrontRegardless();
    visible_ = true;
}

void StripWindow::hide() {
    panel_.orderOut();
    visible_ = false;
}

Rect StripWindow::frame(std::span<const double> widths, const NotchInfo& notch,
                        std::span<const ScreenDescription> screens) {
    const double total = std::accumulate(widths.begin(), widths.end(), 0.0);
    const auto* screen = screenOfTray(screens);
    const double top = screen ? screen->frame.maxY() : 0;
    return {{notch.notchMinX - notchMargin - total, top - notch.menuBarHeight},
            {total, notch.menuBarHeight}};
}

} // namespace orrivane
