#import <macos/appkit/AppKitMainWindow.h>

#import "support/DesktopWorld.h"

#include <tests/support/contracts/MainWindowContract.h>

namespace orrivane {
namespace {

struct MainWindowWorld : DesktopWorld<AppKitMainWindow> {
    MainWindow& window() { return body(); }
    View root() { return {.node = Text{.text = "Orrivane"}}; }
    bool closeByUser() {
        NSWindow* shown = shownWindowOf(ORVMainWindow.class);
        [shown performClose:nil]; // what the button in the title bar does
        return shown != nil;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(AppKit, MainWindowContract, MainWindowWorld);

} // namespace
} // namespace orrivane
