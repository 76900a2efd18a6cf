#include "Witness.h"

#include <algorithm>

namespace orrivane::demo {

namespace {

constexpr int notchMargin = 6; // pixels, at one a point

}

std::vector<e2e::WindowState> Witness::hidden() {
    const auto cutouts = desktop_.observer().cutouts();
    std::vector<e2e::WindowState> result;
    if (cutouts.empty())
        return result;
    for (const auto& icon : desktop_.icons())
        if (icon.isViewable() && icon.area.x < cutouts[0].right() &&
            icon.area.right() > cutouts[0].x)
            result.push_back(icon);
    return result;
}

std::optional<e2e::WindowState> Witness::strip() {
    const auto cutouts = desktop_.observer().cutouts();
    for (const auto& window : desktop_.observer().topLevels())
        if (!cutouts.empty() && window.isViewable() && window.overrideRedirect &&
            window.type != "_NET_WM_WINDOW_TYPE_TOOLTIP" &&
            window.area.right() == cutouts[0].x - notchMargin &&
            window.area.height == cutouts[0].height &&
            desktop_.observer().pidOf(window.id) == program_.pid())
            return window;
    return std::nullopt;
}

std::optional<std::vector<e2e::WindowState>> Witness::mirrored() {
    const auto shown = strip();
    if (!shown)
        return std::vector<e2e::WindowState>{};
    const auto icons = hidden();
    int width = 0;
    for (auto first = icons.end(); first != icons.begin() && width < shown->area.width;) {
        width += (--first)->area.width;
        if (width == shown->area.width)
            return std::vector(first, icons.end());
    }
    return std::nullopt;
}

e2e::PixelRect Witness::lastCell(const std::vector<e2e::WindowState>& icons) {
    const int right = desktop_.observer().cutouts().at(0).x - notchMargin;
    const auto& last = icons.back().area;
    return {right - last.width, 0, last.width, last.height};
}

std::optional<e2e::WindowState> Witness::menuOf(const e2e::WindowState& icon) {
    for (const auto& popup : desktop_.observer().popups())
        if (desktop_.observer().sameClient(popup.id, icon.id))
            return popup;
    return std::nullopt;
}

bool Witness::isAboveStrip(xcb_window_t window) {
    const auto shown = strip();
    if (!shown)
        return true;
    const auto all = desktop_.observer().topLevels();
    const auto place = [&](xcb_window_t id) {
        return std::ranges::find(all, id, &e2e::WindowState::id) - all.begin();
    };
    return place(window) > place(shown->id);
}

std::string listed(const std::vector<e2e::WindowState>& icons) {
    std::string result;
    for (std::size_t i = 0; i < icons.size(); ++i) {
        const auto name =
            icons[i].instanceName.empty() ? "an item without a name" : icons[i].instanceName;
        if (i > 0)
            result += i + 1 == icons.size() ? " and " : ", ";
        result += name;
    }
    return result.empty() ? "nothing" : result;
}

} // namespace orrivane::demo
