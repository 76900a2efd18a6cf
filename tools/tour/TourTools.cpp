#include "Tour.h"

#include <algorithm>

namespace orrivane::tour {

std::string Tour::moveATile() {
    guide_->click("push button", "Show icon list");
    const auto before = guide_->order();
    guide_->waitFor("the tiles show", [&] { return guide_->tiles().size() == before.size(); });
    picture("arrange");
    // From the middle, where tiles are visible and not hidden by the notch, two places to the left.
    const auto tiles = guide_->tiles();
    const auto moved = tiles.size() / 2 + 2;
    const auto target = tiles[moved - 2];
    guide_->drag(tiles[moved].centre(), {target.x + 2, target.centre().y});
    auto expected = before;
    const auto from = expected.begin() + static_cast<std::ptrdiff_t>(moved);
    std::rotate(from - 2, from, from + 1);
    guide_->waitFor("the bar has the new order", [&] { return guide_->order() == expected; });
    picture("arranged");
    guide_->click("push button", "Hide icon list");
    guide_->waitFor("the list is closed", [&] { return guide_->tiles().empty(); });
    return "dragged the tile of \"" + before[moved] +
           "\" two places to the left; the real item moved with it";
}

void Tour::answer(const std::string& button) {
    guide_->click("push button", button);
    guide_->waitFor("the question is gone", [&] { return !guide_->find("push button", "Cancel"); });
}

std::string Tour::squeeze() {
    guide_->click("check box", "Tighten macOS icon spacing");
    guide_->clickInto("slider", "Spacing");
    widths_ = guide_->widths();
    guide_->observer().tapKey(e2e::keyLeft, 12);
    guide_->waitFor("the preview follows", [&] { return guide_->shows("At spacing 4"); });
    const auto prediction = guide_->text("→ ");
    picture("squeeze");
    guide_->click("push button", "Apply & Restart Menu Bar");
    guide_->control("push button", "Cancel");
    picture("squeeze-question");
    answer("Apply & Restart");
    guide_->waitFor("the bar is tighter", [&] {
        const auto now = guide_->widths();
        return now.size() == widths_.size() && std::ranges::all_of(now, [&](const auto& each) {
                   const auto was = widths_.find(each.first);
                   return was != widths_.end() && each.second == was->second - 12;
               });
    });
    if (guide_->hidden() >= hidden_)
        fail("no fewer icons are hidden than before");
    const auto now = guide_->hidden();
    guide_->waitFor("the window tells it", [&] { return guide_->shows("Applied: 4"); });
    picture("squeezed");
    return "squeezed the bar; every item is 12 points narrower, " + std::to_string(now) +
           " icons are hidden instead of " + std::to_string(hidden_) + "; the preview had said \"" +
           prediction + "\"";
}

std::string Tour::resetBothWays() {
    const auto file = guide_->desktop().configFolder() + "/orrivane/menu-bar.conf";
    const auto stored = [&] {
        return e2e::readFile(file).find("NSStatusItemSpacing") != std::string::npos;
    };
    guide_->click("push button", "Reset to Default");
    guide_->control("push button", "Cancel");
    picture("reset-question");
    answer("Reset Without Restart");
    guide_->waitFor("the preference is gone", [&] { return !stored(); });
    if (guide_->widths() == widths_)
        fail("the bar changed without a restart");
    guide_->click("push button", "Reset to Default");
    guide_->control("push button", "Cancel");
    answer("Reset & Restart Menu Bar");
    guide_->waitFor("the bar is as it was", [&] { return guide_->widths() == widths_; });
    guide_->waitFor("the window tells it", [&] {
        return guide_->shows("is hiding " + std::to_string(guide_->hidden()) +
                             " icons — Orrivane is showing all of them");
    });
    picture("reset");
    return "reset the spacing without a restart, then with one; the bar is as it was";
}

} // namespace orrivane::tour
