#include "Drag.h"
#include "ProgramOnDesktop.h"

#include <algorithm>
#include <map>

namespace orrivane::e2e {
namespace {

constexpr int tileSpacing = 8;

/// The program's window on the notched desktop, with everything in it open, worked with pointer and
/// keyboard; what the bar makes of it is seen by a second connection.
class NotchedTools : public ProgramOnDesktop {
  protected:
    void SetUp() override {
        start(fourItems, everythingOpen(false));
        bringWindow();
        if (!HasFatalFailure())
            settle();
    }
    std::map<std::string, int> widths() {
        std::map<std::string, int> result;
        for (const auto& icon : desktop_->icons())
            result[icon.instanceName] = icon.area.width;
        return result;
    }
    void answerWithTheFirstButton() {
        const auto asked = waitForValue<WindowState>("a question", [&] {
            const auto found = dialog();
            return found && isActive(*found) ? found : std::nullopt;
        });
        observer().tapKey(keyReturn);
        EXPECT_TRUE(
            waitFor("it is answered", [&] { return !observer().window(asked.id) || !dialog(); }));
    }
    /// The left end of the row of tiles and the middle of their height: the first row of pixels
    /// below them is the longest run of one darker colour in the window.
    PixelPoint tileRow() {
        const Image image = observer().imageOfRoot(window_.area);
        std::size_t longest = 0;
        PixelPoint found{};
        for (int y = 0; y < image.height; ++y) {
            std::size_t length = 0;
            for (int x = 1; x < image.width; ++x) {
                const auto at = [&](int column) {
                    return image.pixels[static_cast<std::size_t>(y) *
                                            static_cast<std::size_t>(image.width) +
                                        static_cast<std::size_t>(column)] &
                           0xffffffU;
                };
                const auto gray = at(x) & 0xffU;
                length = at(x) == at(x - 1) && gray > 0x90 && gray < 0xc0 ? length + 1 : 0;
                if (length > longest) {
                    longest = length;
                    found = {x - static_cast<int>(length), y};
                }
            }
        }
        EXPECT_GT(longest, 500U);
        constexpr int halfATile = 15;
        return {window_.area.x + found.x, window_.area.y + found.y - halfATile};
    }
};

TEST_F(NotchedTools, aTileDraggedToTheFrontMovesTheRealItemThere) {
    const auto before = order();
    ASSERT_EQ(before.size(), 4U);
    const auto icons = desktop_->icons();
    const auto row = tileRow();
    int left = row.x;
    for (std::size_t i = 0; i + 1 < icons.size(); ++i)
        left += icons[i].area.width + tileSpacing;
    const PixelPoint from{left + icons.back().area.width / 2, row.y};
    const PixelPoint to{row.x + 9, row.y};
    ASSERT_TRUE(dragByHand(observer(), program_->pid(), from, to));
    auto expected = before;
    std::rotate(expected.begin(), expected.end() - 1, expected.end());
    EXPECT_TRUE(waitFor("the bar has the new order", [&] { return order() == expected; }))
        << testing::PrintToString(order());
}

TEST_F(NotchedTools, theSpacingIsTightenedAndResetWithTheKeyboardAlone) {
    const auto before = widths();
    const auto bar = desktop_->processesOf("ControlCenter").at(0);
    // Backwards from the first control: Quit, Refresh, two switches, another, Reset, Apply &
    // Restart, Apply, and the slider.
    observer().tapKeyWith(keyShift, keyTab, 9);
    observer().tapKey(keyLeft, 10);
    observer().tapKey(keyTab, 2);
    observer().tapKey(keySpace);
    answerWithTheFirstButton();
    ASSERT_TRUE(waitFor("the bar is another and tighter", [&] {
        const auto now = widths();
        return desktop_->processesOf("ControlCenter") != std::vector<pid_t>{bar} &&
               now.size() == before.size() && std::ranges::all_of(now, [&](const auto& each) {
                   return each.second == before.at(each.first) - 10;
               });
    })) << testing::PrintToString(widths());
    const auto file = desktop_->configFolder() + "/orrivane/menu-bar.conf";
    EXPECT_NE(readFile(file).find("NSStatusItemSpacing = 6\n"), std::string::npos);
    EXPECT_NE(readFile(file).find("NSStatusItemSelectionPadding = 4\n"), std::string::npos);

    ASSERT_TRUE(waitFor("the window has the keyboard", [&] { return isActive(window_); }));
    observer().tapKey(keyTab);
    observer().tapKey(keySpace);
    answerWithTheFirstButton();
    EXPECT_TRUE(waitFor("the bar is as it was", [&] { return widths() == before; }))
        << testing::PrintToString(widths());
    EXPECT_EQ(readFile(file).find("NSStatusItemSpacing"), std::string::npos);
}

} // namespace
} // namespace orrivane::e2e
