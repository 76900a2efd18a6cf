#include <Orrivane/MenuBarPreview.h>

#include <algorithm>

namespace orrivane {

namespace {

// Lengths in points of the view, whatever the scale of the bar on it.
constexpr double barHeight = 24;
constexpr double barRadius = 6;
constexpr double barBorder = 0.5;
constexpr double barBorderOpacity = 0.25;
constexpr double notchHeight = 22;
constexpr double notchRadius = 4;
constexpr double tileHeight = 16;
constexpr double tileRadius = 3;
constexpr double narrowestTile = 1;
constexpr double capturedScale = 2;
constexpr double placeholderOpacity = 0.25;
constexpr double eatenOpacity = 0.55;
constexpr double eatenBorder = 1;

using Primitives = std::vector<Primitive>;

Rect centered(Point center, Size size) {
    return {{center.x - size.width / 2, center.y - size.height / 2}, size};
}

RoundedRectangle border(const Rect& rect, double radius, ColorRole color, double opacity,
                        double width) {
    return {rect, radius, CornerStyle::continuous, color, opacity, width};
}

/// Where the bar's points come to lie on the view.
struct Projection {
    double scale = 1;
    double originX = 0;
    double midY = 0;

    [[nodiscard]] Point point(double x) const { return {scale * (x - originX), midY}; }
};

Projection projection(const std::optional<NotchInfo>& notch, std::span<const LaidOutIcon> laid,
                      Size size) {
    double span = 0;
    if (notch)
        span = notch->screenWidth;
    else
        for (const auto& entry : laid)
            span += entry.width;
    return {size.width / std::max(1.0, span), notch ? notch->screenMinX : 0, size.height * 0.5};
}

void addBar(Primitives& primitives, Size size) {
    const auto rect = centered({size.width * 0.5, size.height * 0.5}, {size.width, barHeight});
    primitives.emplace_back(BarMaterial{rect, barRadius, CornerStyle::continuous});
    primitives.emplace_back(
        border(rect, barRadius, ColorRole::secondary, barBorderOpacity, barBorder));
}

void addNotch(Primitives& primitives, const NotchInfo& notch, const Projection& onView) {
    const double width = std::max(0.0, onView.scale * (notch.notchMaxX - notch.notchMinX));
    const auto center = onView.point((notch.notchMinX + notch.notchMaxX) * 0.5);
    primitives.emplace_back(RoundedRectangle{centered(center, {width, notchHeight}), notchRadius,
                                             CornerStyle::continuous, ColorRole::black});
}

Primitives placeholder(Point center, double width) {
    const auto rect = centered(center, {width, std::min(width, tileHeight)});
    return {RoundedRectangle{rect, tileRadius, CornerStyle::continuous, ColorRole::secondary,
                             placeholderOpacity},
            DrawnText{rect, "?", 8, FontWeight::medium, ColorRole::secondary, 0.3}};
}

void iconView(Primitives& primitives, const LaidOutIcon& entry, Point center, double width) {
    const auto rect = centered(center, {width, tileHeight});
    const auto content =
        entry.icon.image
            ? Primitives{DrawnImage{rect, *entry.icon.image, capturedScale, ContentMode::fit}}
            : placeholder(center, width);
    if (entry.eaten)
        primitives.emplace_back(Group{eatenOpacity, content.size()});
    primitives.insert(primitives.end(), content.begin(), content.end());
    if (entry.eaten)
        primitives.emplace_back(border(rect, tileRadius, ColorRole::red, 1, eatenBorder));
}

} // namespace

View MenuBarPreview::body() const {
    return {.node = Canvas{CanvasContent(*this), std::nullopt, height}};
}

Drawing MenuBarPreview::drawing(Size size) const {
    const auto laid = layout(notch, icons, simulatedSpacing);
    const auto onView = projection(notch, laid, size);
    Drawing drawing{size, {}};
    const auto addIcons = [&](bool eaten) {
        for (const auto& entry : laid)
            if (entry.eaten == eaten)
                iconView(drawing.primitives, entry, onView.point(entry.x + entry.width * 0.5),
                         std::max(narrowestTile, onView.scale * entry.width));
    };
    addBar(drawing.primitives, size);
    addIcons(false);
    if (notch)
        addNotch(drawing.primitives, *notch, onView);
    addIcons(true);
    return drawing;
}

} // namespace orrivane
