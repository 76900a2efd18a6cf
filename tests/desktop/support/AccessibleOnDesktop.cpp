#include "AccessibleOnDesktop.h"

#include <algorithm>

namespace orrivane::e2e {

void AccessibleOnDesktop::startAndOpenPopover() {
    start(fourItems, everythingOpen(true));
    const auto icon = waitForValue<WindowState>("the own icon", [&] { return ownIcon(); });
    observer().click(icon.area.centre());
    ASSERT_TRUE(waitFor("the popover opens", [&] { return mainWindow().has_value(); }));
    startReading();
}

void AccessibleOnDesktop::startAndOpenWindow() {
    start(fourItems, everythingOpen(false));
    bringWindow();
    if (!HasFatalFailure())
        startReading();
    if (!HasFatalFailure())
        settle();
}

void AccessibleOnDesktop::startReading() {
    reading_.emplace(desktop_->environment()["DBUS_SESSION_BUS_ADDRESS"], program_->pid());
    ASSERT_TRUE(waitFor("it shows a tile for each icon", [&] {
        return reading_->ofRole("list item").size() == desktop_->icons().size();
    }));
}

AccessibleOnDesktop::Layout AccessibleOnDesktop::layoutAtRest() {
    constexpr std::chrono::milliseconds rest{200};
    const auto layout = [&] {
        Layout result;
        for (const auto& each : reading_->enabledControls())
            result.emplace_back(each, tree().extents(each));
        return result;
    };
    return waitForValue<Layout>("its controls have come to rest", [&] {
        const auto before = layout();
        const bool rests = bool(staysTrue("they rest", [&] { return layout() == before; }, rest));
        return rests ? std::optional(before) : std::nullopt;
    });
}

void AccessibleOnDesktop::tabThrough(const std::vector<AccessibleNode>& controls,
                                     std::vector<AccessibleNode>& visited) {
    auto current = reading_->focusedOf(controls);
    ASSERT_TRUE(current) << "it opens with the keyboard in a control";
    visited.push_back(*current);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        observer().tapKey(keyTab);
        ASSERT_TRUE(waitFor("the keyboard goes on",
                            [&] {
                                current = reading_->focusedOf(controls);
                                return current && *current != visited.back();
                            }))
            << "after " << tree().name(visited.back());
        visited.push_back(*current);
    }
}

void AccessibleOnDesktop::expectTabGoesInReadingOrder() {
    const auto layout = layoutAtRest(); // before Tab scrolls anything
    ASSERT_GT(layout.size(), 12U);
    std::vector<AccessibleNode> controls;
    for (const auto& [control, place] : layout)
        controls.push_back(control);
    const auto placeOf = [&](const AccessibleNode& node) {
        return std::ranges::find(layout, node, [](const auto& each) { return each.first; })->second;
    };
    std::vector<AccessibleNode> visited;
    tabThrough(controls, visited);
    if (HasFatalFailure())
        return;
    EXPECT_EQ(visited.back(), visited.front()) << "round again";
    visited.pop_back();
    for (const auto& each : controls)
        EXPECT_EQ(std::ranges::count(visited, each), 1) << tree().name(each);
    for (std::size_t i = 1; i < visited.size(); ++i) {
        const auto previous = placeOf(visited[i - 1]);
        const auto next = placeOf(visited[i]);
        const bool below = next.y >= previous.bottom();
        const bool beside = next.x >= previous.right() && next.bottom() > previous.y;
        EXPECT_TRUE(below || beside) << tree().name(visited[i - 1]) << previous << ", then "
                                     << tree().name(visited[i]) << next;
    }
}

} // namespace orrivane::e2e
