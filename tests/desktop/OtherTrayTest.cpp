#include "AccessibleProgram.h"
#include "Desktop.h"
#include "WaitFor.h"

namespace orrivane::e2e {
namespace {

TEST(OtherTray, theWindowSaysThatItsIconsCannotBeMovedNorRespaced) {
    Desktop desktop({});
    desktop.startClient("parcellite");
    desktop.startClient("volumeicon");
    desktop.setDefault("OrrivaneArrangeExpanded", true);
    desktop.setDefault("OrrivaneSqueezeShown", true);
    desktop.cutOutIcons(0, 0);
    desktop.startProgram({}, {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}});
    desktop.waitForStrip();
    ASSERT_EQ(desktop.launchAgain(), (ExitStatus{0, {}}));

    AccessibleProgram window(desktop.bus().address(), desktop.program().pid());
    ASSERT_TRUE(waitFor("a tile for each icon", [&] {
        return window.ofRole("list item").size() == desktop.foreignIcons().size();
    }));
    EXPECT_TRUE(
        window.find({"label", "The tray of this desktop does not let its icons be moved."}));
    EXPECT_TRUE(window.find({"label", "The tray of this desktop does not read the spacing; it is "
                                      "stored all the same."}));
    for (const auto& tile : window.ofRole("list item")) {
        EXPECT_FALSE(window.tree().has(tile, AccessibleTree::enabled)) << window.tree().name(tile);
        EXPECT_FALSE(window.tree().perform(tile, "Move Left")) << window.tree().name(tile);
    }
}

} // namespace
} // namespace orrivane::e2e
