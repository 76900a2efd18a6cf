#import <macos/appkit/AppKitOwnWindows.h>

#import "support/DesktopWorld.h"
#import "support/PopoverStage.h"

#include <tests/support/contracts/OwnWindowsContract.h>

namespace orrivane {
namespace {

struct OwnWindowsStage {
    AppKitOwnWindows ownWindows;
    AppKitMainWindow window;
    PopoverStage popover;
};

struct OwnWindowsWorld : DesktopWorld<OwnWindowsStage> {
    [[nodiscard]] std::optional<std::string> whyUnavailable() {
        const auto reason = DesktopWorld::whyUnavailable();
        return reason ? reason : body().popover.whyHidden();
    }
    OwnWindows& ownWindows() { return body().ownWindows; }
    std::int64_t openMainViewWindow() {
        body().window.create({"Orrivane", {300, 200}, {100, 100}});
        body().window.setRoot(someText());
        body().window.makeKeyAndOrderFront();
        return shownWindowOf(ORVMainWindow.class).windowNumber;
    }
    std::int64_t openPopover() {
        auto& popover = body().popover.popover;
        popover.setRoot(someText());
        popover.setContentSize({300, 200});
        popover.show(body().popover.item);
        orrivane::pumpUntil([] { return PopoverStage::window() != nil; });
        return PopoverStage::window().windowNumber;
    }
    void closeMainViewWindow() { [shownWindowOf(ORVMainWindow.class) performClose:nil]; }
    bool openForeignWindow(std::int64_t& number) {
        number = foreignWindow();
        return number != 0;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(AppKit, OwnWindowsContract, OwnWindowsWorld);

} // namespace
} // namespace orrivane
