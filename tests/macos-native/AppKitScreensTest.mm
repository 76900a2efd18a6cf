#import <macos/appkit/AppKitScreens.h>

#import "support/DesktopWorld.h"

#include <tests/support/contracts/ScreensContract.h>

namespace orrivane {
namespace {

/// Nobody plugs anything in: each state is there or is not.
struct AttachedScreensWorld : DesktopWorld<AppKitScreens> {
    Screens& screens() { return body(); }
    bool attachPlain() { return displays() == 1 && !isNotched(); }
    bool attachNotched() { return displays() == 1 && isNotched(); }
    bool attachTwo() { return displays() == 2; }
    bool detachAll() { return false; }
    bool setDisplayAsleep(bool) { return false; }

  private:
    static std::uint32_t displays() {
        std::uint32_t count = 0;
        CGGetActiveDisplayList(0, nullptr, &count);
        return count;
    }
    static bool isNotched() { return NSScreen.screens.firstObject.safeAreaInsets.top > 0; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Attached, ScreensContract, AttachedScreensWorld);

} // namespace
} // namespace orrivane
