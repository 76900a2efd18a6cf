#include <linux/qt/view/RoleFonts.h>

#include <QGuiApplication>

namespace orrivane {

namespace {

struct Style {
    double size; // of the user's font
    QFont::Weight weight = QFont::Normal;
};

// Sizes as a desktop that names such roles relates them; none is below what can still be read.
Style style(FontRole role) {
    switch (role) {
    case FontRole::title:
        return {1.6, QFont::DemiBold};
    case FontRole::headline:
        return {1, QFont::DemiBold};
    case FontRole::body:
        return {1};
    case FontRole::callout:
        return {0.95};
    case FontRole::footnote:
    case FontRole::caption:
        return {0.88};
    case FontRole::smallestCaption:
        return {0.82, QFont::Medium};
    }
    return {1};
}

} // namespace

QFont roleFont(FontRole role, FontWeight weight) {
    auto font = QGuiApplication::font();
    const auto wanted = style(role);
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * wanted.size);
    else
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * wanted.size)));
    font.setWeight(weight == FontWeight::medium ? std::max(wanted.weight, QFont::Medium)
                                                : wanted.weight);
    return font;
}

} // namespace orrivane
