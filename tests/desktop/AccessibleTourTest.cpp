#include "AccessibleTree.h"
#include "NotchedDesktop.h"
#include "WaitFor.h"

#include <QCoreApplication>

#include <algorithm>

namespace orrivane::e2e {
namespace {

constexpr xcb_keysym_t tabKey = 0xff09; // keysymdef.h
constexpr xcb_keysym_t leftKey = 0xff51;
constexpr xcb_keysym_t altKey = 0xffe9;

/// Role and name of a control.
using Control = std::pair<std::string, std::string>;

/// The program's window on the notched desktop with everything in it open, read and worked by
/// another process as assistive programs do.
class AccessibleTour : public testing::Test {
  protected:
    void SetUp() override {
        desktop_.emplace(std::vector<std::string>{"--items", "battery,wifi,volume,mail",
                                                  "--no-windows", "--panel", "760,0,150,37"});
        writeFile(settings(), "[General]\nOrrivaneShowStatusItem=false\n"
                              "OrrivaneArrangeExpanded=true\nOrrivaneSqueezeShown=true\n");
        program_.emplace(launch("program"));
        // Its windows are made after it has become the program on this desktop.
        ASSERT_TRUE(waitFor("it has started", [&] {
            return std::ranges::any_of(observer().topLevels(), [&](const auto& each) {
                return each.area.width >= 900 && observer().pidOf(each.id) == program_->pid();
            });
        }));
        auto second = launch("second");
        ASSERT_EQ(second.wait(std::chrono::seconds(10)), (ExitStatus{0, {}}));
        tree_.emplace(desktop_->environment()["DBUS_SESSION_BUS_ADDRESS"]);
        application_ = waitForValue<AccessibleNode>(
            "its tree", [&] { return tree_->application(program_->pid()); });
        ASSERT_TRUE(waitFor("it shows a tile for each icon", [&] {
            return ofRole("list item").size() == desktop_->icons().size();
        }));
        window_ = waitForValue<WindowState>("the window has come to rest", [&] {
            auto before = window();
            const bool rests = before && staysTrue(
                                             "it rests", [&] { return window() == before; },
                                             std::chrono::milliseconds(700));
            const bool active = rests && observer().activeWindow() == before->id;
            return active ? before : std::nullopt;
        });
    }
    ChildProcess launch(const std::string& name) {
        ChildProcess::Options options;
        options.arguments = {ORRIVANE_E2E_PROGRAM};
        options.environment = desktop_->environment();
        options.logFile = folder_.path() + "/" + name + ".log";
        return ChildProcess(std::move(options));
    }
    [[nodiscard]] std::string settings() const {
        return desktop_->configFolder() + "/orrivane/orrivane.conf";
    }
    Observer& observer() { return desktop_->observer(); }
    std::optional<WindowState> window() {
        for (const auto& each : observer().tree())
            if (each.isViewable() && each.area.width >= 900 && each.area.height >= 400 &&
                observer().pidOf(each.id) == program_->pid())
                return each;
        return std::nullopt;
    }
    /// What shows, in the order of the tree.
    std::vector<AccessibleNode> shown() {
        auto nodes = tree_->below(application_);
        std::erase_if(nodes,
                      [&](const auto& each) { return !tree_->has(each, AccessibleTree::showing); });
        return nodes;
    }
    std::vector<AccessibleNode> ofRole(const std::string& role) {
        auto nodes = shown();
        std::erase_if(nodes, [&](const auto& each) { return tree_->roleName(each) != role; });
        return nodes;
    }
    std::optional<AccessibleNode> find(const Control& control) {
        for (const auto& each : ofRole(control.first))
            if (tree_->name(each) == control.second)
                return each;
        return std::nullopt;
    }
    AccessibleNode require(const Control& control) {
        return waitForValue<AccessibleNode>(control.second, [&] { return find(control); });
    }
    /// What the user can work now.
    std::vector<AccessibleNode> controls() {
        auto nodes = shown();
        std::erase_if(nodes, [&](const auto& each) {
            return !tree_->has(each, AccessibleTree::focusable) ||
                   !tree_->has(each, AccessibleTree::enabled) || tree_->roleName(each) == "frame" ||
                   tree_->roleName(each) == "window";
        });
        return nodes;
    }
    Control described(const AccessibleNode& node) {
        return {tree_->roleName(node), tree_->name(node)};
    }
    /// The one of `nodes` that has the keyboard, if it is exactly one.
    std::optional<AccessibleNode> focusedOf(const std::vector<AccessibleNode>& nodes) {
        std::vector<AccessibleNode> focused;
        for (const auto& each : nodes)
            if (tree_->has(each, AccessibleTree::focused))
                focused.push_back(each);
        return focused.size() == 1 ? std::optional(focused.front()) : std::nullopt;
    }
    /// Classes of the icons, left to right.
    std::vector<std::string> order() {
        std::vector<std::string> result;
        for (const auto& icon : desktop_->icons())
            result.push_back(icon.instanceName);
        return result;
    }
    bool becomes(const std::vector<std::string>& expected) {
        return bool(waitFor("the bar has the new order", [&] { return order() == expected; }));
    }

    TempDirectory folder_;
    std::optional<NotchedDesktop> desktop_;
    std::optional<ChildProcess> program_;
    std::optional<AccessibleTree> tree_;
    AccessibleNode application_;
    WindowState window_;
};

TEST_F(AccessibleTour, tabVisitsEveryControlInReadingOrderAndComesRoundAgain) {
    const auto all = controls();
    ASSERT_GT(all.size(), 12U);
    std::vector<PixelRect> places;
    for (const auto& each : all)
        places.push_back(tree_->extents(each));
    const auto indexOf = [&](const AccessibleNode& node) {
        return static_cast<std::size_t>(std::ranges::find(all, node) - all.begin());
    };
    const auto first = focusedOf(all);
    ASSERT_TRUE(first) << "the window opens with the keyboard in a control";
    std::vector<std::size_t> visited{indexOf(*first)};
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto before = focusedOf(all);
        observer().tapKey(tabKey);
        std::optional<AccessibleNode> now;
        ASSERT_TRUE(waitFor("the keyboard goes on",
                            [&] {
                                now = focusedOf(all);
                                return now && now != before;
                            }))
            << "after " << (before ? tree_->name(*before) : "nothing");
        visited.push_back(indexOf(*now));
    }
    EXPECT_EQ(visited.back(), visited.front()) << "round again";
    visited.pop_back();
    for (std::size_t i = 0; i < all.size(); ++i)
        EXPECT_TRUE(std::ranges::count(visited, i) == 1) << tree_->name(all[i]);
    for (std::size_t i = 1; i < visited.size(); ++i) {
        const auto& previous = places[visited[i - 1]];
        const auto& next = places[visited[i]];
        const bool below = next.y >= previous.bottom();
        const bool beside = next.x >= previous.right() && next.bottom() > previous.y;
        EXPECT_TRUE(below || beside) << tree_->name(all[visited[i - 1]]) << previous << ", then "
                                     << tree_->name(all[visited[i]]) << next;
    }
}

TEST_F(AccessibleTour, everyControlHasItsNameAndRole) {
    std::vector<Control> found;
    for (const auto& each : controls()) {
        found.push_back(described(each));
        EXPECT_FALSE(found.back().second.empty()) << found.back().first;
        EXPECT_GT(tree_->extents(each).width, 0) << found.back().second;
    }
    // What comes and goes with the build and with time.
    std::erase_if(found, [](const Control& each) {
        return each.second == "Check for Updates…" || each.second == "Refresh";
    });
    std::vector<Control> expected{
        {"check box", "Show hidden icons beside the notch"},
        {"check box", "Keep mirroring on the notched screen while external displays are connected"},
        {"push button", "Hide icon list"},
        {"push button", "Refresh the icon list"},
        {"check box", "Tighten macOS icon spacing"},
        {"slider", "Spacing"},
        {"push button", "Apply"},
        {"push button", "Apply & Restart Menu Bar"},
        {"push button", "Reset to Default"},
        {"check box", "Check automatically"},
        {"check box", "Launch at login"},
        {"check box", "Menu bar icon"},
        {"push button", "Quit"},
    };
    std::vector<Control> tiles;
    for (const auto& icon : desktop_->icons())
        tiles.emplace_back("list item", icon.className);
    expected.insert(expected.begin() + 3, tiles.begin(), tiles.end());
    EXPECT_EQ(found, expected);
    std::vector<std::string> headings;
    for (const auto& box : ofRole("panel"))
        if (!tree_->name(box).empty())
            headings.push_back(tree_->name(box));
    EXPECT_EQ(headings,
              (std::vector<std::string>{"Now", "Preview", "Orrivane Notch", "Arrange", "Squeeze"}));
}

TEST_F(AccessibleTour, aSwitchSaysWhetherItIsOnAndIsTurnedByItsAction) {
    const auto icon = require({"check box", "Menu bar icon"});
    const auto mirrors = require({"check box", "Show hidden icons beside the notch"});
    EXPECT_FALSE(tree_->has(icon, AccessibleTree::checked));
    EXPECT_TRUE(tree_->has(mirrors, AccessibleTree::checked));
    const auto docked = desktop_->icons().size();
    ASSERT_TRUE(tree_->perform(icon, "Toggle"));
    EXPECT_TRUE(waitFor("it is on", [&] { return tree_->has(icon, AccessibleTree::checked); }));
    EXPECT_TRUE(
        waitFor("the own icon is there", [&] { return desktop_->icons().size() == docked + 1; }));
    ASSERT_TRUE(tree_->perform(icon, "Toggle"));
    EXPECT_TRUE(waitFor("it is off", [&] { return !tree_->has(icon, AccessibleTree::checked); }));
    EXPECT_TRUE(
        waitFor("the own icon is gone", [&] { return desktop_->icons().size() == docked; }));
}

TEST_F(AccessibleTour, theSliderTellsItsValueAndTakesAnother) {
    const auto slider = require({"slider", "Spacing"});
    EXPECT_EQ(tree_->value(slider, "MinimumValue"), 4);
    EXPECT_EQ(tree_->value(slider, "MaximumValue"), 16);
    EXPECT_EQ(tree_->value(slider, "CurrentValue"), 16);
    EXPECT_TRUE(find({"label", "At spacing 16"}));
    tree_->setValue(slider, 9);
    const auto previews = [&] { return find({"label", "At spacing 9"}).has_value(); };
    EXPECT_TRUE(waitFor("the preview is that of the new value", previews));
    EXPECT_EQ(tree_->value(slider, "CurrentValue"), 9);
}

TEST_F(AccessibleTour, buttonsArePressedByTheirAction) {
    ASSERT_TRUE(tree_->perform(require({"push button", "Hide icon list"}), "Press"));
    EXPECT_TRUE(waitFor("the list is closed", [&] {
        return find({"push button", "Show icon list"}) && ofRole("list item").empty();
    }));
    ASSERT_TRUE(tree_->perform(require({"push button", "Show icon list"}), "Press"));
    EXPECT_TRUE(waitFor("the list is open", [&] { return ofRole("list item").size() == 4; }));

    ASSERT_TRUE(tree_->perform(require({"push button", "Reset to Default"}), "Press"));
    const auto cancel = require({"push button", "Cancel"});
    EXPECT_TRUE(find({"push button", "Reset Without Restart"}));
    ASSERT_TRUE(tree_->perform(cancel, "Press"));
    EXPECT_TRUE(waitFor("the question is gone", [&] { return !find({"push button", "Cancel"}); }));
}

TEST_F(AccessibleTour, aTileIsMovedByItsAction) {
    auto expected = order();
    ASSERT_EQ(expected.size(), 4U);
    const auto tiles = ofRole("list item");
    EXPECT_NE(tree_->description(tiles.back()), "");
    ASSERT_TRUE(tree_->perform(tiles.back(), "Move Left"));
    std::swap(expected[2], expected[3]);
    EXPECT_TRUE(becomes(expected)) << testing::PrintToString(order());
}

TEST_F(AccessibleTour, aTileIsMovedWithTheKeyboard) {
    auto expected = order();
    ASSERT_EQ(expected.size(), 4U);
    const auto tile = ofRole("list item").back();
    ASSERT_TRUE(tree_->grabFocus(tile));
    ASSERT_TRUE(
        waitFor("it is focused", [&] { return tree_->has(tile, AccessibleTree::focused); }));
    observer().key(altKey, true);
    observer().tapKey(leftKey);
    observer().tapKey(leftKey);
    EXPECT_TRUE(staysTrue(
        "nothing moves while the key is held", [&] { return order() == expected; },
        std::chrono::milliseconds(800)));
    observer().key(altKey, false);
    std::rotate(expected.begin() + 1, expected.end() - 1, expected.end());
    EXPECT_TRUE(becomes(expected)) << testing::PrintToString(order());
    EXPECT_TRUE(waitFor("the tile has the keyboard still and stands there", [&] {
        const auto tiles = ofRole("list item");
        return tiles.size() == 4 && tiles[1] == tile && tree_->has(tile, AccessibleTree::focused);
    }));
}

} // namespace
} // namespace orrivane::e2e

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
