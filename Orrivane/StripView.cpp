#include <Orrivane/StripView.h>

namespace orrivane {

namespace {

constexpr double capturedScale = 2.0;
constexpr double placeholderInset = 6;
constexpr double placeholderRadius = 4;
constexpr double placeholderOpacity = 0.4;

Drawing label(const StripItem& item, double barHeight) {
    const Size size{item.width, barHeight};
    const Rect cell{{0, 0}, size};
    Drawing drawing{size, {ClipRectangle{cell, false}}};
    if (item.image) {
        drawing.primitives.emplace_back(
            DrawnImage{cell, *item.image, capturedScale, ContentMode::fill});
        return drawing;
    }
    const Rect inner{{placeholderInset, placeholderInset},
                     {size.width - 2 * placeholderInset, size.height - 2 * placeholderInset}};
    // A cell narrower than both insets has no room for a placeholder.
    if (inner.size.width > 0 && inner.size.height > 0)
        drawing.primitives.emplace_back(RoundedRectangle{inner, placeholderRadius,
                                                         CornerStyle::continuous,
                                                         ColorRole::secondary, placeholderOpacity});
    return drawing;
}

} // namespace

View StripView::body() const {
    HorizontalStack row{0, Alignment::center, {}};
    row.children.reserve(items.size());
    for (const auto& item : items)
        row.children.push_back(View{item.id, item.appName, item.appName,
                                    Button{ButtonStyle::plain,
                                           label(item, barHeight),
                                           {item.onPress},
                                           {item.onSecondaryPress}}});
    return View{0, {}, {}, std::move(row)};
}

} // namespace orrivane
