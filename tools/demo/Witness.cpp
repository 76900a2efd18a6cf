#include "Witness.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace orrivane::demo {

namespace {

constexpr int gapToNotch = 6;
/// Of 255, on the average. A tray that blends soft edges in its own way makes up to 5; two
/// different icons make 40 and more.
constexpr double tolerance = 12;

double meanDifference(const e2e::Image& a, const e2e::Image& b) {
    if (a.pixels.size() != b.pixels.size() || a.pixels.empty())
        return 255;
    double sum = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i)
        for (unsigned shift = 0; shift < 24; shift += 8)
            sum += std::abs(static_cast<int>((a.pixels[i] >> shift) & 0xffU) -
                            static_cast<int>((b.pixels[i] >> shift) & 0xffU));
    return sum / (3.0 * static_cast<double>(a.pixels.size()));
}

std::vector<std::string> namesOf(const std::vector<Icon>& icons) {
    std::vector<std::string> names;
    for (const auto& icon : icons)
        names.push_back(icon.owner->kind->name);
    return names;
}

} // namespace

std::vector<Icon> Witness::tray() {
    std::vector<Icon> icons;
    for (const auto& window : desktop_.foreignIcons()) {
        const auto pid = desktop_.observer().pidOf(window.id);
        for (const auto& client : desktop_.clients())
            if (window.isViewable() && pid == client.process.pid())
                icons.push_back({&client, window});
    }
    return icons;
}

std::vector<Icon> Witness::hidden() {
    auto icons = tray();
    std::erase_if(icons, [&](const Icon& icon) { return !icon.window.area.intersects(notch_); });
    return icons;
}

bool Witness::looksLike(const e2e::WindowState& icon, int x) {
    const e2e::PixelRect seen =
        icon.area.intersection({icon.area.x, notch_.y, icon.area.width, notch_.height});
    auto& observer = desktop_.observer();
    return meanDifference(observer.imageOfRoot(seen),
                          observer.imageOfRoot({x, seen.y, seen.width, seen.height})) <= tolerance;
}

std::optional<std::vector<std::string>> Witness::stripNames() {
    const auto strip = desktop_.strip();
    if (!strip)
        return std::nullopt;
    const auto icons = tray();
    std::vector<std::string> names;
    for (int x = strip->area.x; x < strip->area.right();) {
        const auto match = std::ranges::find_if(icons, [&](const Icon& icon) {
            return x + icon.window.area.width <= strip->area.right() && looksLike(icon.window, x);
        });
        if (match == icons.end()) {
            names.emplace_back("an unknown picture");
            break;
        }
        names.push_back(match->owner->kind->name);
        x += match->window.area.width;
    }
    return names;
}

e2e::PixelRect Witness::stripPlace(const std::vector<Icon>& icons) const {
    int width = 0;
    for (const auto& icon : icons)
        width += icon.window.area.width;
    return {notch_.x - gapToNotch - width, notch_.y, width, notch_.height};
}

std::optional<e2e::PixelRect> Witness::cellOf(const e2e::DockedClient& owner) {
    const auto icons = hidden();
    e2e::PixelRect cell = stripPlace(icons);
    for (const auto& icon : icons) {
        cell.width = icon.window.area.width;
        if (icon.owner == &owner)
            return cell;
        cell.x += cell.width;
    }
    return std::nullopt;
}

std::optional<std::string> Witness::complaint() {
    const auto icons = hidden();
    const auto shown = stripNames().value_or(std::vector<std::string>{});
    if (shown != namesOf(icons))
        return "the strip shows " + listed(shown) + " instead of " + listed(icons);
    const auto strip = desktop_.strip();
    const auto place = stripPlace(icons);
    if (icons.empty() || (strip && strip->area == place))
        return std::nullopt;
    std::ostringstream sentence;
    sentence << "the strip shows " << listed(shown) << ", but not at " << place;
    if (strip)
        sentence << ": it is at " << strip->area;
    return sentence.str();
}

bool Witness::isAboveStrip(xcb_window_t menu) {
    const auto strip = desktop_.strip();
    bool passedStrip = false;
    for (const auto& window : desktop_.observer().topLevels()) {
        passedStrip = passedStrip || (strip && window.id == strip->id);
        if (window.id == menu)
            return passedStrip;
    }
    return false;
}

std::string listed(const std::vector<std::string>& names) {
    if (names.empty())
        return "nothing";
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    return text;
}

std::string listed(const std::vector<Icon>& icons) {
    return listed(namesOf(icons));
}

} // namespace orrivane::demo
