#pragma once

#import "Desktop.h"
#import "Pump.h"

#import <macos/appkit/AppKitMainWindow.h>
#import <macos/appkit/AppKitPopover.h>
#import <macos/appkit/AppKitStatusBar.h>
#import <macos/view/ScreenView.h>

#include <Orrivane/MenuBarIcon.h>

#include <optional>
#include <string>

namespace orrivane {

/// Something with a height to show.
inline View someText() {
    return {.node = Text{.text = "Orrivane"}};
}

/// A status item and a popover for it.
struct PopoverStage {
    AppKitStatusItem item{NSVariableStatusItemLength};
    AppKitPopover popover;

    PopoverStage() { item.setImage(MenuBarIcon::image()); }

    /// The popover's window; nil while it is closed.
    static NSWindow* _Nullable window() {
        for (NSWindow* window in NSApp.windows)
            if (window.visible && ![window isKindOfClass:ORVMainWindow.class] &&
                firstView(window.contentView, ORVScreenView.class) != nil)
                return window;
        return nil;
    }
    /// An item without room in the bar has no popover.
    std::optional<std::string> whyHidden() {
        const bool shown = pumpUntil([&] {
            return (item.button().window.occlusionState & NSWindowOcclusionStateVisible) != 0;
        });
        return shown ? std::nullopt
                     : std::optional<std::string>("the menu bar does not show the test's item");
    }
};

} // namespace orrivane
