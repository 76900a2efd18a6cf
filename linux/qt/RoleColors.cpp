#include <linux/qt/RoleColors.h>

namespace orrivane {

namespace {

// How much of the text colour subordinate text keeps: as little as stays legible (4.5 to 1) on a
// window and on a card in it.
constexpr double secondaryOnLight = 0.67;
constexpr double secondaryOnDark = 0.62;

QColor secondary(const QPalette& palette) {
    auto color = palette.color(QPalette::WindowText);
    color.setAlphaF(isDark(palette) ? float(secondaryOnDark) : float(secondaryOnLight));
    return color;
}

} // namespace

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::WindowText).lightness() >
           palette.color(QPalette::Window).lightness();
}

QColor roleColor(ColorRole role, const QPalette& palette) {
    const auto shade = [&palette](QRgb light, QRgb dark) {
        return QColor(isDark(palette) ? dark : light);
    };
    switch (role) {
    case ColorRole::primary:
        return palette.color(QPalette::WindowText);
    case ColorRole::secondary:
        return secondary(palette);
    case ColorRole::accent:
        return palette.color(QPalette::Highlight);
    case ColorRole::black:
        return Qt::black;
    case ColorRole::gray:
        return shade(0x8c8c91, 0x98989d);
    case ColorRole::green:
        return shade(0x15702a, 0x3ad15a);
    case ColorRole::orange:
        return shade(0xb86200, 0xff9f1a);
    case ColorRole::red:
        return shade(0xc4211a, 0xff5d54);
    }
    return palette.color(QPalette::WindowText);
}

} // namespace orrivane
