#include <desktop/support/Theme.h>

#include <desktop/support/MenuStyle.h>

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QPalette>

namespace orrivane::desktop {

namespace {

Theme lightTheme() {
    Theme theme;
    theme.barBackground = QColor(0xf4f5f8);
    theme.barForeground = QColor(0x1b1d22);
    theme.menuBackground = QColor(0xf8f9fb);
    theme.menuBorder = QColor(0, 0, 0, 44);
    theme.menuSeparator = QColor(0, 0, 0, 28);
    theme.text = QColor(0x1c1e24);
    theme.faintText = QColor(0x868b96);
    theme.accent = QColor(0x2f6fed);
    theme.accentText = QColor(0xffffff);
    theme.windowBackground = QColor(0xffffff);
    theme.sidebarBackground = QColor(0xf0f1f5);
    theme.windowBorder = QColor(0xc3c6ce);
    theme.fieldBackground = QColor(0xe4e6ec);
    return theme;
}

Theme darkTheme() {
    Theme theme;
    theme.dark = true;
    theme.barBackground = QColor(0x1d1f26);
    theme.barForeground = QColor(0xf3f4f7);
    theme.menuBackground = QColor(0x2a2d35);
    theme.menuBorder = QColor(255, 255, 255, 40);
    theme.menuSeparator = QColor(255, 255, 255, 30);
    theme.text = QColor(0xeceef2);
    theme.faintText = QColor(0x8f95a3);
    theme.accent = QColor(0x3d7bf5);
    theme.accentText = QColor(0xffffff);
    theme.windowBackground = QColor(0x1f2128);
    theme.sidebarBackground = QColor(0x282b33);
    theme.windowBorder = QColor(0x4a4e59);
    theme.fieldBackground = QColor(0x383c46);
    return theme;
}

} // namespace

Theme Theme::make(bool dark, double scale) {
    Theme theme = dark ? darkTheme() : lightTheme();
    theme.scale = scale;
    return theme;
}

int Theme::pixels(double points) const {
    return static_cast<int>(std::lround(points * scale));
}

QFont Theme::font(double points, QFont::Weight weight) const {
    QFont font;
    font.setFamilies({"Inter", "Cantarell", "Noto Sans", "Nimbus Sans", "DejaVu Sans"});
    font.setPixelSize(std::max(1, pixels(points)));
    font.setWeight(weight);
    return font;
}

void Theme::install(QApplication& application) const {
    QPalette palette(windowBackground);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, windowBackground);
    palette.setColor(QPalette::Window, windowBackground);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, accentText);
    palette.setColor(QPalette::PlaceholderText, faintText);
    application.setStyle(new MenuStyle(*this));
    application.setPalette(palette);
    application.setFont(font(13));
    QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
    QApplication::setEffectEnabled(Qt::UI_FadeMenu, false);
}

} // namespace orrivane::desktop
