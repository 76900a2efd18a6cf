#import <macos/appkit/AppKitTrayPanel.h>

#import "support/DesktopWorld.h"

#import <macos/view/StripPanelView.h>
#include <tests/support/contracts/TrayPanelContract.h>

namespace orrivane {
namespace {

/// The panel as the window server has it.
struct TrayPanelWorld : DesktopWorld<AppKitTrayPanel> {
    TrayPanel& panel() { return body(); }
    bool isVisible() { return window() != nil && isOnScreen(window().windowNumber); }
    Rect frame() { return frameByWindowServer(window().windowNumber).value_or(Rect{}); }
    // Events of this process only: a real click would take the permission to press for the user.
    void click(Point place) {
        const NSPoint inWindow = NSMakePoint(place.x, window().frame.size.height - place.y);
        for (const auto type : {NSEventTypeLeftMouseDown, NSEventTypeLeftMouseUp})
            [NSApp postEvent:[NSEvent mouseEventWithType:type
                                                location:inWindow
                                           modifierFlags:0
                                               timestamp:NSProcessInfo.processInfo.systemUptime
                                            windowNumber:window().windowNumber
                                                 context:nil
                                             eventNumber:1
                                              clickCount:1
                                                pressure:1]
                     atStart:NO];
    }
    bool hasFocus() { return window().isKeyWindow; }

  private:
    static NSWindow* window() { return shownWindowOf(ORVStripPanelView.class); }
};
INSTANTIATE_TYPED_TEST_SUITE_P(AppKit, TrayPanelContract, TrayPanelWorld);

} // namespace
} // namespace orrivane
