#include "NotchedDesktop.h"
#include "WaitFor.h"

#include <algorithm>
#include <map>

namespace orrivane::e2e {
namespace {

constexpr xcb_keysym_t tabKey = 0xff09; // keysymdef.h
constexpr xcb_keysym_t leftKey = 0xff51;
constexpr xcb_keysym_t shiftKey = 0xffe1;
constexpr xcb_keysym_t enterKey = 0xff0d;
constexpr xcb_keysym_t spaceKey = ' ';
constexpr int tileSpacing = 8;

/// The program's window on the notched desktop, with everything in it open, worked with pointer and
/// keyboard; what the bar makes of it is seen by a second connection.
class NotchedTools : public testing::Test {
  protected:
    void SetUp() override {
        desktop_.emplace(std::vector<std::string>{"--items", "battery,wifi,volume,mail",
                                                  "--no-windows", "--panel", "760,0,150,37"});
        writeFile(desktop_->configFolder() + "/orrivane/orrivane.conf",
                  "[General]\nOrrivaneShowStatusItem=false\nOrrivaneArrangeExpanded=true\n"
                  "OrrivaneSqueezeShown=true\n");
        program_.emplace(launch("program"));
        // Its windows are made after it has become the program on this desktop.
        ASSERT_TRUE(waitFor("it has started", [&] {
            return std::ranges::any_of(observer().topLevels(), [&](const auto& each) {
                return each.area.width >= 900 && observer().pidOf(each.id) == program_->pid();
            });
        }));
        auto second = launch("second");
        ASSERT_EQ(second.wait(std::chrono::seconds(10)), (ExitStatus{0, {}}));
        window_ = waitForValue<WindowState>("the window has come to rest", [&] {
            auto before = window();
            const bool rests = before && staysTrue(
                                             "it rests", [&] { return window() == before; },
                                             std::chrono::milliseconds(700));
            return rests && isActive(*before) ? before : std::nullopt;
        });
    }
    ChildProcess launch(const std::string& name) {
        ChildProcess::Options options;
        options.arguments = {ORRIVANE_E2E_PROGRAM};
        options.environment = desktop_->environment();
        options.logFile = folder_.path() + "/" + name + ".log";
        return ChildProcess(std::move(options));
    }
    Observer& observer() { return desktop_->observer(); }
    std::optional<WindowState> window() {
        for (const auto& each : observer().tree())
            if (each.isViewable() && each.area.width >= 900 && each.area.height >= 400 &&
                observer().pidOf(each.id) == program_->pid())
                return each;
        return std::nullopt;
    }
    bool isActive(const WindowState& window) { return observer().activeWindow() == window.id; }
    /// Classes of the icons, left to right.
    std::vector<std::string> order() {
        std::vector<std::string> result;
        for (const auto& icon : desktop_->icons())
            result.push_back(icon.instanceName);
        return result;
    }
    std::map<std::string, int> widths() {
        std::map<std::string, int> result;
        for (const auto& icon : desktop_->icons())
            result[icon.instanceName] = icon.area.width;
        return result;
    }
    void press(xcb_keysym_t key, int times = 1) {
        for (int i = 0; i < times; ++i)
            observer().tapKey(key);
    }
    void pressWithShift(xcb_keysym_t key, int times) {
        observer().key(shiftKey, true);
        press(key, times);
        observer().key(shiftKey, false);
    }
    /// The question that the program asks.
    std::optional<WindowState> dialog() {
        for (const auto& each : observer().tree())
            if (each.isViewable() && each.id != window_.id && each.area.width > 150 &&
                each.area.height > 60 && each.type == "_NET_WM_WINDOW_TYPE_DIALOG" &&
                observer().pidOf(each.id) == program_->pid())
                return each;
        return std::nullopt;
    }
    void answerWithTheFirstButton() {
        const auto asked = waitForValue<WindowState>("a question", [&] {
            const auto found = dialog();
            return found && isActive(*found) ? found : std::nullopt;
        });
        press(enterKey);
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

    TempDirectory folder_;
    std::optional<NotchedDesktop> desktop_;
    std::optional<ChildProcess> program_;
    WindowState window_;
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
    observer().movePointer(from);
    observer().button(1, true);
    // Slowly, as a hand: the toolkit looks at the pointer now and then only.
    constexpr int steps = 12;
    for (int i = 1; i <= steps + 3; ++i) {
        observer().movePointer({from.x + (to.x - from.x) * std::min(i, steps) / steps, from.y});
        EXPECT_TRUE(staysTrue("it is dragged", [] { return true; }, std::chrono::milliseconds(40)));
    }
    observer().button(1, false);
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
    pressWithShift(tabKey, 9);
    press(leftKey, 10);
    press(tabKey, 2);
    press(spaceKey);
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
    press(tabKey);
    press(spaceKey);
    answerWithTheFirstButton();
    EXPECT_TRUE(waitFor("the bar is as it was", [&] { return widths() == before; }))
        << testing::PrintToString(widths());
    EXPECT_EQ(readFile(file).find("NSStatusItemSpacing"), std::string::npos);
}

} // namespace
} // namespace orrivane::e2e
